#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>

#include "qzxml/fastinfoset/FITextIndexesFind.h"
#include "qzxml/fastinfoset/FIVocabulary.h"
#include "qzxml/fastinfoset/FIWritingTables.h"
#include "qzxml/fastinfoset/FastInfosetWriter.h"
#include "qzxml/fastinfoset/FastInfosetWriterForms.h"

namespace QzXmlLib16 {

namespace detail {
class FastInfosetRunHost;
}  // namespace detail

// The place of a text in a table: what stands for it there, or what it gets when it is written in
// full. The text has to live for as long as this.
class CFastInfosetWriter::CTableEntry {
 public:
  CTableEntry(std::string_view text, CFIVocabulary::CIndexMap& table)
      : m_text(text), m_table(table), m_bAdd(true), m_key(detail::CFITextIndexes::KeyOf(text)) {}

  // A text of this length or more has no place in the table, and is not looked for.
  CTableEntry(std::string_view text, CFIVocabulary::CIndexMap& table, std::uint32_t maxAddLength)
      : m_text(text), m_table(table), m_bAdd(text.size() < maxAddLength), m_key(0) {
    if (m_bAdd) m_key = detail::CFITextIndexes::KeyOf(text);
  }

  // 0 for none.
  std::uint32_t FindIndex() const { return m_bAdd ? m_table.Find(m_text, m_key) : 0; }

  // What the writer is for runs. Here, as what is nested in the writer can see all of it.
  static std::unique_ptr<detail::FastInfosetRunHost> NewRunHost(CFastInfosetWriter& writer);

  bool IsToBeAdded() const { return m_bAdd; }

  // Behind FindIndex that gave none. Answers the index; 0 where it has none, and where the table is
  // full.
  std::uint32_t Add() {
    const std::size_t size = m_table.GetCount();
    if (!m_bAdd || size >= CFIVocabulary::kMaxEntries) return 0;
    const auto index = static_cast<std::uint32_t>(size + 1);
    m_table.Add(m_text, m_key, index);
    return index;
  }

 private:
  class CRunHost;

  std::string_view m_text;
  CFIVocabulary::CIndexMap& m_table;
  bool m_bAdd;
  std::uint64_t m_key;
};

template <>
inline CFIVocabulary::CIndexMap& CFastInfosetWriter::GetTable<detail::CFIAttributeForm>() const {
  return m_pTables->maps.attributeValues;
}

template <>
inline CFIVocabulary::CIndexMap& CFastInfosetWriter::GetTable<detail::CFIChunkForm>() const {
  return m_pTables->maps.characterChunks;
}

}  // namespace QzXmlLib16
