#pragma once

namespace QzXmlLib16 {

class CSerializationContext;
class CXmlElement;

namespace detail {

// What a class minds about the element of a value, beyond what its table says. It is asked about
// each such element ahead of its text, looks at all of its attributes but xsi:nil, and throws what
// is to refuse it. Shared by all threads.
class IElementRules {
 public:
  virtual ~IElementRules() = default;
  virtual void CheckElement(const CSerializationContext& context, const CXmlElement& element,
                            bool isNil) const = 0;
};

}  // namespace detail
}  // namespace QzXmlLib16
