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

// Options of Fast Infoset that change what is written: how values share the tables and how they are
// encoded, also where they can not be.
inline std::vector<CSerializationContext> FastInfosetContexts(const char* uri) {
  using Encoding = CFastInfosetContext::EncodedCharacterString;
  using Setting = std::function<void(CFastInfosetContext&)>;
  std::vector<Setting> settings;
  for (const std::uint32_t length : {0U, 1U, 2U, 4U, 5U, 7U, 8U, 9U, 33U, 100000U}) {
    settings.emplace_back([length](CFastInfosetContext& options) {
      options.SetElementMaxAddLength(length);
      options.SetAttributeMaxAddLength(length + 1);
    });
  }
  // The first two algorithms are for texts of binary data, which no other is.
  const Encoding encodings[] = {Encoding(0, 0), Encoding(1, 0),  Encoding(1, 1),  Encoding(1, 2),
                                Encoding(1, 3), Encoding(2, 0),  Encoding(2, 3),  Encoding(2, 4),
                                Encoding(2, 5), Encoding(2, 6),  Encoding(2, 7),  Encoding(2, 8),
                                Encoding(2, 9), Encoding(2, 10), Encoding(2, 11), Encoding(3, 1)};
  for (const Encoding& encoding : encodings) {
    for (const int last : {ItemType_ui8, ItemType_r8, ItemType_integer}) {
      settings.emplace_back([encoding, last](CFastInfosetContext& options) {
        for (int kind = ItemType_i1; kind <= last; ++kind) {
          options.SetEncoding(static_cast<ItemType>(kind), encoding);
        }
      });
    }
  }
  settings.emplace_back([](CFastInfosetContext& options) {
    options.SetUseGeneratedVocabulary(true);
    options.SetExternalVocabularyURI("urn:vocabulary");
    options.GetVocabulary()->AddElementValue("true");
    options.GetVocabulary()->AddAttributeValue("7");
  });
  std::vector<CSerializationContext> contexts;
  for (const Setting& setting : settings) {
    for (const bool suggested : {false, true}) {
      CSerializationContext context;
      context.SetDefaultNamespaceURI(uri);
      if (suggested) context.GetFIContext().SetSuggestedValues();
      setting(context.GetFIContext());
      contexts.push_back(context);
    }
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

inline void ExpectOctetsAsWalked(const CXmlObjectBase& object,
                                 const CSerializationContext& context) {
  const Written planned = OctetsByPlan(object, context);
  const Written walked = OctetsByWalk(object, context);
  ASSERT_EQ(walked.text, planned.text);
  ASSERT_EQ(walked.failure, planned.failure);
}

// The same in every form, with each context in some of them, and as Fast Infoset.
inline void ExpectPlannedAsWalked(const CXmlObjectBase& object, const char* uri) {
  const std::vector<Form> forms = Forms();
  const std::vector<CSerializationContext> contexts = WritingContexts(uri);
  for (std::size_t i = 0; i < contexts.size(); ++i) {
    ExpectPlannedAsWalked(object, forms[i % forms.size()], contexts[i]);
    if (::testing::Test::HasFatalFailure()) return;
    ExpectOctetsAsWalked(object, contexts[i]);
    if (::testing::Test::HasFatalFailure()) return;
  }
  for (const CSerializationContext& context : FastInfosetContexts(uri)) {
    ExpectOctetsAsWalked(object, context);
    if (::testing::Test::HasFatalFailure()) return;
  }
  for (const Form& form : forms) ExpectPlannedAsWalked(object, form, contexts[1]);
}

}  // namespace qztest
