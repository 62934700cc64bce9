#include "examples/Survey.h"

using namespace QzXmlLib16;
using namespace QzXmlLib16Data;

namespace survey {
namespace {

constexpr char kNamespace[] = "urn:example:survey";

// The class as a whole: a sequence, a real element, unknown attributes refused, no base classes, no
// text of its own.
CParentElementInfo* ClassInfo() {
  static CParentElementInfo info(XmlElementGroupType_Sequence, XmlElementType_Element, "survey",
                                 kNamespace, true, false, -1, ItemType_None, nullptr, false);
  return &info;
}

}  // namespace

CSurvey::CSurvey() { SetElementName("survey"); }

std::string CSurvey::GetTargetNamespace() const { return kNamespace; }
std::string CSurvey::GetNamespace() const { return kNamespace; }

void CSurvey::AccessProperty(int index, bool read, QzVariant& value) const {
  CSurvey& self = const_cast<CSurvey&>(*this);
  switch (index) {
    case Property_By:
      return AccessValue<ItemType_string>(read, value, self.m_by);
    case Property_Accuracy:
      return AccessValue<ItemType_r8>(read, value, self.m_accuracy);
    default:
      return;
  }
}

CParentElementInfo* CSurvey::GetClassInfo() const { return ClassInfo(); }

CElementInfo** CSurvey::GetClassElementInfo() const {
  static CElementInfoSeqPrimMnd by("by", kNamespace, Property_By, false, ItemType_string, nullptr,
                                   CWhitespaceUtils::WhitespaceRule_Collapse,
                                   CPrimitiveRestrictions(), nullptr);
  static CElementInfoSeqPrimOpt accuracy(
      "accuracy", kNamespace, Property_Accuracy, false, ItemType_r8, nullptr,
      CWhitespaceUtils::WhitespaceRule_Collapse, CPrimitiveRestrictions(), nullptr);
  static CElementInfo* table[] = {&by, &accuracy, nullptr};
  return table;
}

CAttributeInfo** CSurvey::GetClassAttributeInfo() const {
  static CAttributeInfo* table[] = {nullptr};
  return table;
}

void CSurvey::Init() {
  m_by.reset();
  m_accuracy.reset();
}

}  // namespace survey
