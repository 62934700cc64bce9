#pragma once

#include <optional>
#include <string>

#include "qzxml/QzXml.h"

// An element of an application's own, kept in the extensions of a GPX document:
//
//   <survey xmlns="urn:example:survey"><by>...</by><accuracy>...</accuracy></survey>
//
// It is the smallest class that binds something: two children, of which <by> has to be there.
namespace survey {

class CSurvey : public QzXmlLib16::CXmlGeneratedClass {
 public:
  CSurvey();

  std::string GetTargetNamespace() const override;
  std::string GetNamespace() const override;

  const std::optional<std::string>& GetBy() const { return m_by; }
  void SetBy(const std::optional<std::string>& value) { m_by = value; }
  const std::optional<double>& GetAccuracy() const { return m_accuracy; }  // metres
  void SetAccuracy(const std::optional<double>& value) { m_accuracy = value; }

 protected:
  void AccessProperty(int index, bool read, QzXmlLib16::QzVariant& value) const override;
  QzXmlLib16Data::CParentElementInfo* GetClassInfo() const override;
  QzXmlLib16Data::CElementInfo** GetClassElementInfo() const override;
  QzXmlLib16Data::CAttributeInfo** GetClassAttributeInfo() const override;
  void Init() override;

 private:
  enum Property : int { Property_By, Property_Accuracy };

  std::optional<std::string> m_by;
  std::optional<double> m_accuracy;
};

}  // namespace survey
