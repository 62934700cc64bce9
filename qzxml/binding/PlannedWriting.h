#pragma once

#include "qzxml/binding/PlannedOctets.h"
#include "qzxml/binding/PlannedSinks.h"
#include "qzxml/binding/WritePlan.h"

namespace QzXmlLib16 {
class CBoundClass;
class CSerializationContext;
class CXmlObjectBase;
}  // namespace QzXmlLib16

namespace QzXmlLib16::detail {

// Writes objects by the plans of their classes. The document is the one that the walk writes, byte
// for byte, and so are the failures: whatever is not the ordinary case is done by the walk's own
// entries, in the place of which a step has not begun to do anything.
//
// What is left out beside the calls: the facets of a value. They are those that the value was held
// against on its way in, by the same member of the same class (CBoundClass::CheckValue), and a
// value of a bound class does not change in its place.
//
// Sink is one of those in PlannedSinks.h.
template <typename Sink>
class CPlannedWriting {
 public:
  // An element is open in the writer, which is at its place again when Content is done. The
  // arguments are those of the sink.
  template <typename... Arguments>
  explicit CPlannedWriting(const CSerializationContext& context, Arguments&... arguments)
      : m_context(context), m_sink(context, arguments...) {}

  // The children of an object that is not nil; then nothing else is written by this object.
  void Content(const CWritePlan& plan, const CBoundClass& object, bool optionalChoice);

 private:
  using CChild = CWritePlan::CChild;

  // What a step answers is whether something was written.
  void Attributes(const CWritePlan& plan, const CBoundClass& object);
  void Attribute(const CWritePlan::CAttribute& attribute, const CBoundClass& object);
  void Children(const CWritePlan& plan, const CBoundClass& object, bool optionalChoice);
  bool Child(const CChild& child, const CBoundClass& object);
  bool Collection(const CChild& child, const CBoundClass& object);
  void Text(const CPlannedValue& text, const CBoundClass& object);
  // An object that is nil, or has not the content that its class requires.
  static bool IsEmpty(const CWritePlan& plan, const CBoundClass& object);
  bool PutObject(const CChild& child, const CXmlObjectBase& object, bool optionalChoice);

  template <typename Step>
  void Walk(Step step);
  bool WalkChild(const CChild& child, const CBoundClass& object);
  void WalkItem(const CChild& child, const CXmlObjectBase& item);

  const CSerializationContext& m_context;
  Sink m_sink;
};

}  // namespace QzXmlLib16::detail
