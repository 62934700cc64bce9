#pragma once

#include <string>
#include <string_view>

#include "qzxml/runtime/SmartPtr.h"
#include "qzxml/serialization/ElementInfo.h"
#include "qzxml/serialization/XmlObjectBase.h"
#include "qzxml/values/QzVariant.h"
#include "qzxml/xml/ShortText.h"
#include "qzxml/xml/XmlElement.h"

// The steps that the members of the three families share. A member of the grid is made of a few of
// these and adds what its model group decides.
namespace QzXmlLib16 {
class CXmlAttribute;
}  // namespace QzXmlLib16

namespace QzXmlLib16Data {

// What an xsi:nil says.
enum NilValue { NilValue_True, NilValue_False, NilValue_Unknown };

// "true" and "1", "false" and "0" without regard to case.
NilValue ReadNil(const QzXmlLib16::CXmlAttribute& attribute);

// Throw CQzValidationException with the path of their argument: "Unexpected Attribute found.",
// "Invalid use of 'nil' attribute in non-nillable element." and "Unexpected Value [%s] for 'nil'
// Attribute found.".
[[noreturn]] void ThrowUnexpectedAttribute(const QzXmlLib16::CXmlAttribute& attribute);
[[noreturn]] void ThrowNilNotAllowed(const CXmlElement& element);
[[noreturn]] void ThrowUnexpectedNil(const QzXmlLib16::CXmlAttribute& attribute);

// The text of a value under a format: the text itself of a string, else what was put into scratch.
const std::string& TextOf(const QzVariant& value, const std::string& format, std::string& scratch);

// The text of an enumerator, put into scratch; null gives the empty text.
const std::string& TextOf(const char* text, std::string& scratch);

// As QzVariant::FromString. A string stands in scratch, which has to outlive the value.
void ReadValue(QzVariant& value, std::string_view text, ItemType type,
               CWhitespaceUtils::WhitespaceRule rule, std::string& scratch);

// Whether the facet test lets every value of a kind pass, so that it need not be made.
bool PassesEveryValue(ItemType type, const CPrimitiveRestrictions& restrictions);

// The kind that a value of a bound class is written as: that of the variant, but that of the member
// for a real that travels as its text, as it does where the kind's own text has too few digits.
inline ItemType WrittenKind(const QzVariant& value, ItemType itemType) {
  const ItemType kind = value.GetTypeAsEnum();
  const bool isReal = itemType == QzXmlLib16::ItemType_r4 || itemType == QzXmlLib16::ItemType_r8;
  return isReal && kind == QzXmlLib16::ItemType_string ? itemType : kind;
}

// Static steps on a member that is given first.
class CElementInfoValues {
 public:
  using Object = CSmartPtr<CXmlObjectBase>;
  using Collection = CSmartPtr<CXmlCollectionBase>;

  // --- Writing

  // True, or throws CQzInvalidParamException "The Property [%s] is mandatory, it may not be NULL".
  static bool RequireWritten(const CElementInfo& info, bool written);
  static bool IsDefault(const CElementInfo& info, std::string_view text) {
    return !info.m_strDefaultValue.empty() && text == info.m_strDefaultValue;
  }
  static bool NilToXml(const CElementInfo& info, CXmlWriter* writer);
  // Nothing for an empty collection. Whether something was written.
  static bool CollectionToXml(const CElementInfo& info, const CSerializationContext& context,
                              CXmlCollectionBase* collection, CXmlWriter* writer);
  // A collection whose count must be right, unless the context ignores it.
  static bool CountedCollectionToXml(const CElementInfo& info, const CSerializationContext& context,
                                     const CXmlGeneratedClass* object, CXmlWriter* writer);
  // The attributes of a class or of a collection without a tag of its own.
  static void ObjectAttributesToXml(const CElementInfo& info, XmlElementType elementType,
                                    const CSerializationContext& context,
                                    const CXmlGeneratedClass* object, CXmlWriter* writer);
  static void CollectionAttributesToXml(const CElementInfo& info, XmlElementType elementType,
                                        const CSerializationContext& context,
                                        const CXmlGeneratedClass* object, CXmlWriter* writer);

  // --- Reading: all are given the cursor, and move it behind what they took

  // Whether the element at the cursor, which may be null, is the member; as IsThisElement.
  static bool IsAt(const CElementInfo& info, const CSerializationContext& context,
                   const CXmlElement* cursor) {
    using QzXmlLib16::detail::AreEqual;
    return cursor != nullptr && AreEqual(cursor->GetLocalName(), info.m_strElementName) &&
           (context.GetIgnoreNamespaces() ||
            AreEqual(cursor->GetNamespaceURI(), info.m_strElementNamespace));
  }
  // Whether the element is nil; tests its attributes on the way.
  static bool IsNil(const CElementInfo& info, const CSerializationContext& context,
                    const CXmlElement& element);

  // The object or collection that the class holds; never null.
  static Object HeldObject(const CElementInfo& info, CXmlGeneratedClass* object);
  static Collection HeldCollection(const CElementInfo& info, CXmlGeneratedClass* object);

  // What the factory of a class makes; never null.
  static Object Make(const CElementInfo& info, ClassFactory factory, int classId);

  // Reads child from the element at the cursor, which is its own, and steps to the next sibling.
  static void ReadOwnElement(CXmlObjectBase* child, CXmlElement** cursor,
                             const CSerializationContext& context, bool optionalChoice = false);
  // Reads child from the cursor on, inside parent. Whether it took something.
  static bool ReadInParent(CXmlObjectBase* child, CXmlElement* parent, CXmlElement** cursor,
                           const CSerializationContext& context);
  // Reads an open element as above, if the element at the cursor has the member's name or the
  // member is called "AnyElement"; cursor is not at the end.
  static bool ReadOpenElement(const CElementInfo& info, CXmlObjectBase* child, CXmlElement* parent,
                              CXmlElement** cursor, const CSerializationContext& context);
  // Reads a collection from the cursor on; gives the first element that it left.
  static CXmlElement* ReadCollection(CXmlCollectionBase* collection, CXmlElement* parent,
                                     CXmlElement* cursor, const CSerializationContext& context);
  // The same for a collection of open elements, which keeps to the member's name unless that is
  // "AnyElement", in the namespace of the first element.
  static CXmlElement* ReadOpenCollection(const CElementInfo& info, CXmlCollectionBase* collection,
                                         CXmlElement* parent, CXmlElement* cursor,
                                         const CSerializationContext& context);

  // Puts child, which may be null, into the property.
  static void Store(const CElementInfo& info, CXmlGeneratedClass* object, CXmlObjectBase* child,
                    const CXmlElement& parent);

  // --- Whole members that may be absent. Whether something was taken and stored.

  static bool TakeOptionalClass(const CElementInfo& info, XmlElementType elementType,
                                ClassFactory factory, int classId,
                                const CSerializationContext& context, CXmlGeneratedClass* object,
                                CXmlElement* parent, CXmlElement** cursor);
  // child is what a factory made from the element at the cursor; true.
  static bool TakeSubstitution(const CElementInfo& info, const CSerializationContext& context,
                               CXmlGeneratedClass* object, CXmlElement* parent,
                               CXmlElement** cursor, CXmlObjectBase* child);
  static bool TakeOptionalOpenElement(const CElementInfo& info, const std::string& restrictions,
                                      const std::string& targetNamespace,
                                      const CSerializationContext& context,
                                      CXmlGeneratedClass* object, CXmlElement* parent,
                                      CXmlElement** cursor, const char* parentNamespace);

  // --- Failures

  // Pass what is not null. A null pointer is a mistake of the class: asserted, and thrown as a
  // mandatory property without a value.
  static void RequireObject(const CElementInfo& info, const CXmlObjectBase* object);
  static void RequireCollection(const CElementInfo& info, const CXmlCollectionBase* spCol);

  [[noreturn]] static void ThrowMandatoryProperty(const CElementInfo& info);
  // CQzValidationException with the path of the parent.
  [[noreturn]] static void ThrowMissingChild(const CElementInfo& info, const CXmlElement& parent);
  [[noreturn]] static void ThrowMissingSubstitution(const CElementInfo& info,
                                                    const CXmlElement& parent);
  [[noreturn]] static void ThrowMissingNamespace(const CElementInfo& info,
                                                 const CXmlElement& parent);
  // CQzValidationException with an empty path.
  [[noreturn]] static void ThrowNotFound(const CElementInfo& info);
};

}  // namespace QzXmlLib16Data
