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

// Expects the same document, or the same failure behind the same beginning.
inline void ExpectPlannedAsWalked(const CXmlObjectBase& object, const Form& form,
                                  const CSerializationContext& context) {
  const Written planned = ByPlan(object, form, context);
  const Written walked = ByWalk(object, form, context);
  ASSERT_EQ(walked.text, planned.text) << form.formatted << form.eol << ' ' << form.blockSize;
  ASSERT_EQ(walked.failure, planned.failure);
  ASSERT_EQ(walked.flushes, planned.flushes);
}

// The same in every form, with each context in some of them, and as Fast Infoset.
inline void ExpectPlannedAsWalked(const CXmlObjectBase& object, const char* uri) {
  const std::vector<Form> forms = Forms();
  const std::vector<CSerializationContext> contexts = WritingContexts(uri);
  for (std::size_t i = 0; i < contexts.size(); ++i) {
    ExpectPlannedAsWalked(object, forms[i % forms.size()], contexts[i]);
    if (::testing::Test::HasFatalFailure()) return;
    const Written planned = OctetsByPlan(object, contexts[i]);
    const Written walked = OctetsByWalk(object, contexts[i]);
    ASSERT_EQ(walked.text, planned.text);
    ASSERT_EQ(walked.failure, planned.failure);
  }
  for (const Form& form : forms) ExpectPlannedAsWalked(object, form, contexts[1]);
}

}  // namespace qztest
