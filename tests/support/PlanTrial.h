#pragma once

#include <functional>
#include <string>
#include <vector>

#include "tests/support/QzTest.h"
#include "tests/support/WalkedText.h"

namespace qztest {

// Settings of a context that change what is written, alone and together.
inline std::vector<CSerializationContext> WritingContexts(const char* uri) {
  using Setting = std::function<void(CSerializationContext&)>;
  const std::vector<Setting> settings = {
      [uri](CSerializationContext& context) { context.SetDefaultNamespaceURI(uri); },
      [uri](CSerializationContext& context) { context.GetNamespaceAliases().Add("q", uri); },
      [](CSerializationContext& context) { context.SetWriteDefaultElementValues(true); },
      [](CSerializationContext& context) { context.SetNoOptionalAttributeDefaultOutput(true); },
      [](CSerializationContext& context) { context.SetWriteTypeAttribute(false); },
      [](CSerializationContext& context) {
        context.SetIndentChars("                         ");  // more than a short indent
        context.SetInLineSchema("extra=\"schema\"");
        context.GetProcessingInstructions().push_back("<?p i?>");
      },
      [](CSerializationContext& context) {
        CFastInfosetContext& options = context.GetFIContext();
        options.SetSuggestedValues();
        context.SetIgnoreInvalidCollectionCounts(true);
        context.SetIgnoreMissingChoice(true);
      },
  };
  std::vector<CSerializationContext> contexts;
  for (std::size_t chosen = 0; chosen < std::size_t{1} << settings.size(); ++chosen) {
    CSerializationContext context;
    for (std::size_t i = 0; i < settings.size(); ++i) {
      if ((chosen >> i & 1) != 0) settings[i](context);
    }
    contexts.push_back(context);
  }
  return contexts;
}

inline std::vector<Form> Forms() {
  std::vector<Form> forms;
  for (const bool formatted : {true, false}) {
    for (const EOLType eol : {EOLType_LF, EOLType_CRLF}) {
      for (const std::uint32_t blockSize : {2U, 61U, 200U, 1000U, 4096U, 65536U}) {
        forms.push_back({formatted, eol, blockSize, false});
      }
      for (const std::uint32_t blockSize : {500U, 4096U}) {
        forms.push_back({formatted, eol, blockSize, true});
      }
    }
  }
  return forms;
}

// Expects the same document, or the same failure behind the same beginning, from the plan and from
// the walk.
inline void ExpectPlannedAsWalked(const CXmlObjectBase& object, const char* uri) {
  for (const CSerializationContext& context : WritingContexts(uri)) {
    for (const Form& form : Forms()) {
      const Written planned = ByPlan(object, form, context);
      const Written walked = ByWalk(object, form, context);
      ASSERT_EQ(walked.text, planned.text) << form.formatted << form.eol << ' ' << form.blockSize;
      ASSERT_EQ(walked.failure, planned.failure);
      ASSERT_EQ(walked.flushes, planned.flushes);
    }
    const Written planned = OctetsByPlan(object, context);
    const Written walked = OctetsByWalk(object, context);
    ASSERT_EQ(walked.text, planned.text);
    ASSERT_EQ(walked.failure, planned.failure);
  }
}

}  // namespace qztest
