#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

#include "qzxml/fastinfoset/FIVocabulary.h"
#include "qzxml/platform/Assert.h"
#include "qzxml/platform/Export.h"
#include "qzxml/values/ItemType.h"

namespace QzXmlLib16 {

namespace detail {
class FastInfosetRun;
}  // namespace detail

// The options of Fast Infoset, which CSerializationContext::GetFIContext gives.
//
//   CSerializationContext context;
//   context.GetFIContext().SetSuggestedValues();   // numbers and binary data in binary form
//   CBinaryData bytes = order->ToFastInfosetStream(FInfoDecl_None, context);
//
// A plain value: copy it freely; threads may read one that nobody changes.
class QZXML_API CFastInfosetContext {
 public:
  // How values of a kind are written.
  struct EncodedCharacterString {
    explicit EncodedCharacterString(std::uint32_t type = 0, std::uint32_t index = 0)
        : m_dwType(type), m_dwIndex(index) {}

    // 0 for text, 1 for the characters of a restricted alphabet, 2 for an encoding algorithm.
    std::uint32_t m_dwType;
    // The alphabet, from 1, or the algorithm by its number in CFastInfosetBinaryData.
    std::uint32_t m_dwIndex;
  };

  CFastInfosetContext();
  CFastInfosetContext(const CFastInfosetContext& other);
  CFastInfosetContext& operator=(const CFastInfosetContext& other);
  virtual ~CFastInfosetContext();

  // ---- Values ----

  // How values of a kind are written; as text for every kind, unless it is set. For a number that
  // is no kind the answer is text, and nothing is set; both assert
  // "itemType >= 0 && itemType < 29" then. A wrong type or index is found when a value is written.
  EncodedCharacterString GetEncoding(ItemType itemType) const {
    QZ_ASSERT(itemType >= 0 && itemType < 29);
    if (itemType < 0 || itemType >= kItemTypes) return EncodedCharacterString();
    return m_encodings[static_cast<std::size_t>(itemType)];
  }
  void SetEncoding(ItemType itemType, const EncodedCharacterString& encoding);

  // Sets the encodings under which documents are small: algorithms for binary data, integers, reals
  // and booleans, alphabets for dates, decimals and integers of any size, text for durations. Kinds
  // of text keep what they have. Meant: an unsigned integer of 64 bits is written as a signed one,
  // so that one above its range fails.
  void SetSuggestedValues();

  // How a text is written that has no other encoding. 0, UTF-8.
  std::uint8_t GetDefaultStringEncoding() const { return m_defaultStringEncoding; }

  // ---- Tables ----

  // An attribute value of this many bytes or more is not put into the tables, and not looked for
  // there. 6; 0 for no values at all.
  std::uint32_t GetAttributeMaxAddLength() const { return m_dwAttributeMaxAddLength; }
  void SetAttributeMaxAddLength(std::uint32_t length) { m_dwAttributeMaxAddLength = length; }

  // The same for texts of elements. 6.
  std::uint32_t GetElementMaxAddLength() const { return m_dwElementMaxAddLength; }
  void SetElementMaxAddLength(std::uint32_t length) { m_dwElementMaxAddLength = length; }

  // Whether documents start from the tables of GetVocabulary, which whoever reads them has to have
  // too. False.
  bool GetUseGeneratedVocabulary() const { return m_bUseGeneratedVocabulary; }
  void SetUseGeneratedVocabulary(bool use) { m_bUseGeneratedVocabulary = use; }

  // What documents start from; never null, and part of the context. No document changes it.
  CFIVocabulary* GetVocabulary() { return &m_vocabulary; }
  const CFIVocabulary* GetVocabulary() const { return &m_vocabulary; }

  // What names that vocabulary in a document; "" for the library's own URI. "". Null is taken as
  // the empty text.
  std::string GetExternalVocabularyURI() const { return m_strExternalVocabularyURI; }
  void SetExternalVocabularyURI(const char* uri);

 private:
  friend class detail::FastInfosetRun;

  static constexpr int kItemTypes = 29;

  std::uint8_t m_defaultStringEncoding = 0;
  std::array<EncodedCharacterString, kItemTypes> m_encodings;
  std::uint32_t m_dwAttributeMaxAddLength = 6;
  std::uint32_t m_dwElementMaxAddLength = 6;
  bool m_bUseGeneratedVocabulary = false;
  CFIVocabulary m_vocabulary;
  std::string m_strExternalVocabularyURI;
};

}  // namespace QzXmlLib16
