#include "qzxml/serialization/ElementTable.h"

#include <typeinfo>

#include "qzxml/serialization/ElementInfoAll.h"
#include "qzxml/serialization/ElementInfoChoice.h"
#include "qzxml/serialization/ElementInfoSeq.h"

namespace QzXmlLib16Data {

// What ElementTable.h needs to see of the members that are classes.
class CElementTableAccess {
 public:
  template <typename Member>
  static bool IsTagged(const CElementInfo& member) {
    return typeid(member) == typeid(Member) &&
           static_cast<const Member&>(member).m_elementType != XmlElementType_PseudoElement;
  }
};

namespace {

// Whether a member is of one of these very classes, not of one derived from it.
template <typename... Members>
bool IsExactlyOneOf(const CElementInfo& member) {
  const std::type_info& its = typeid(member);
  return ((its == typeid(Members)) || ...);
}

template <typename... Members>
bool IsTaggedOneOf(const CElementInfo& member) {
  return (CElementTableAccess::IsTagged<Members>(member) || ...);
}

bool IsValue(const CElementInfo& member) {
  return IsExactlyOneOf<CElementInfoSeqPrimMnd, CElementInfoSeqPrimOpt, CElementInfoSeqPrimCol,
                        CElementInfoSeqEnumMnd, CElementInfoSeqEnumOpt, CElementInfoSeqEnumCol,
                        CElementInfoAllPrimMnd, CElementInfoAllPrimOpt, CElementInfoAllEnumMnd,
                        CElementInfoAllEnumOpt, CElementInfoChoicePrimOpt,
                        CElementInfoChoicePrimCol, CElementInfoChoiceEnumOpt,
                        CElementInfoChoiceEnumCol>(member);
}

bool IsClass(const CElementInfo& member) {
  return IsExactlyOneOf<CElementInfoSeqClsMnd, CElementInfoSeqClsOpt, CElementInfoSeqClsCol,
                        CElementInfoSeqAbsClsMnd, CElementInfoSeqAbsClsOpt,
                        CElementInfoSeqAbsClsCol, CElementInfoAllClsMnd, CElementInfoAllClsOpt,
                        CElementInfoAllAbsClsMnd, CElementInfoAllAbsClsOpt,
                        CElementInfoChoiceClsOpt, CElementInfoChoiceClsCol,
                        CElementInfoChoiceAbsClsOpt, CElementInfoChoiceAbsClsCol>(member);
}

bool IsClassWithTag(const CElementInfo& member) {
  return IsTaggedOneOf<CElementInfoSeqClsMnd, CElementInfoSeqClsOpt, CElementInfoSeqClsCol,
                       CElementInfoSeqAbsClsMnd, CElementInfoSeqAbsClsOpt, CElementInfoSeqAbsClsCol,
                       CElementInfoAllClsMnd, CElementInfoAllClsOpt, CElementInfoAllClsCol,
                       CElementInfoAllAbsClsMnd, CElementInfoAllAbsClsOpt, CElementInfoAllAbsClsCol,
                       CElementInfoChoiceClsOpt, CElementInfoChoiceClsCol,
                       CElementInfoChoiceAbsClsOpt, CElementInfoChoiceAbsClsCol>(member);
}

bool IsOpen(const CElementInfo& member) {
  return IsExactlyOneOf<CElementInfoSeqUntpdMnd, CElementInfoSeqUntpdOpt, CElementInfoSeqUntpdCol,
                        CElementInfoAllUntpdMnd, CElementInfoAllUntpdOpt, CElementInfoAllUntpdCol,
                        CElementInfoChoiceUntpdOpt, CElementInfoChoiceUntpdCol>(member);
}

}  // namespace

bool ReadsNoNamespace(const CElementInfo& member) { return IsValue(member) || IsClass(member); }

bool WritesNoAttributes(const CElementInfo& member) {
  return IsValue(member) || IsOpen(member) || IsClassWithTag(member);
}

bool AreAll(CElementInfo** table, bool (*isSo)(const CElementInfo&),
            CFoundFor<CElementInfo*>& foundFor) {
  if (foundFor.Is(table)) return true;
  for (CElementInfo** entry = table; *entry != nullptr; ++entry) {
    if (!isSo(**entry)) return false;
  }
  foundFor.Keep(table);
  return true;
}

bool IsSoughtByPlace(const CElementInfo& member) {
  return IsSequenceCollection(member) ||
         IsExactlyOneOf<CElementInfoSeqClsMnd, CElementInfoSeqClsOpt, CElementInfoSeqAbsClsMnd,
                        CElementInfoSeqAbsClsOpt, CElementInfoSeqPrimMnd, CElementInfoSeqPrimOpt,
                        CElementInfoSeqEnumMnd, CElementInfoSeqEnumOpt, CElementInfoSeqUntpdMnd,
                        CElementInfoSeqUntpdOpt>(member);
}

bool IsSequenceCollection(const CElementInfo& member) {
  return IsExactlyOneOf<CElementInfoSeqCol, CElementInfoSeqClsCol, CElementInfoSeqAbsClsCol,
                        CElementInfoSeqPrimCol, CElementInfoSeqEnumCol, CElementInfoSeqUntpdCol>(
      member);
}

bool IsChoiceCollectionOfElements(const CElementInfo& member) {
  return IsExactlyOneOf<CElementInfoChoicePrimCol, CElementInfoChoiceEnumCol,
                        CElementInfoChoiceUntpdCol>(member) ||
         IsTaggedOneOf<CElementInfoChoiceClsCol, CElementInfoChoiceAbsClsCol>(member);
}

bool LooksToTheEnd(const CElementInfo& member) {
  return typeid(member) == typeid(CElementInfoSeqPrimMnd);
}

}  // namespace QzXmlLib16Data
