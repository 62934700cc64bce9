#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "qzxml/fastinfoset/FIIndexMaps.h"
#include "qzxml/platform/Export.h"

namespace QzXmlLib16 {

// The tables by which a Fast Infoset document says a text or a name again: by its index instead of
// in full. They grow as a document is written or read, in the order of what is met.
//
// Each table is there twice. A writer finds the index of a text in a map, a reader the text of an
// index in a vector; what is added by hand goes into both, so that one vocabulary serves both
// directions as what a document starts from (CFastInfosetContext::GetVocabulary).
//
//   CFIVocabulary& vocabulary = *context.GetFIContext().GetVocabulary();
//   vocabulary.AddNamespaceName("urn:orders");
//   vocabulary.AddElement("", "urn:orders", "order");
//
// Indexes begin at 1. A new vocabulary has the prefix "xml" and the XML namespace name at index 1.
// A table takes 2^20 entries, the most that an index can say; what comes then is not added, which
// is no failure. A plain value; a copy is deep. Not locked.
// Source: ITU-T Rec. X.891 | ISO/IEC 24824-1, clause 8.
class QZXML_API CFIVocabulary {
 public:
  // The parts of a qualified name, each an index into the table of its kind; 0 for none.
  struct CQNameParts {
    CQNameParts(std::uint32_t prefix, std::uint32_t namespaceName, std::uint32_t localName)
        : m_dwPrefixIndex(prefix),
          m_dwNamespaceIndex(namespaceName),
          m_dwLocalNameIndex(localName) {}

    std::uint32_t m_dwPrefixIndex;
    std::uint32_t m_dwNamespaceIndex;
    std::uint32_t m_dwLocalNameIndex;
  };

  // The entry of index n stands at n - 1.
  class QZXML_API CFIStringTable {
   public:
    using const_iterator = std::vector<std::string>::const_iterator;

    CFIStringTable();
    CFIStringTable(const CFIStringTable& other);
    CFIStringTable& operator=(const CFIStringTable& other);
    virtual ~CFIStringTable();

    const_iterator begin() const { return m_table.begin(); }
    const_iterator end() const { return m_table.end(); }

    // The entry of an index from a document. Throws CQzException "Failed to parse FastInfoset. The
    // index %u is outside a table of %u entries." for 0 and for what is not there.
    const std::string& GetEntry(std::uint32_t index) const;

    std::vector<std::string> m_table;
  };

  // As CFIStringTable.
  class QZXML_API CFIQNameTable {
   public:
    using const_iterator = std::vector<CQNameParts>::const_iterator;

    CFIQNameTable();
    CFIQNameTable(const CFIQNameTable& other);
    CFIQNameTable& operator=(const CFIQNameTable& other);
    virtual ~CFIQNameTable();

    const_iterator begin() const { return m_table.begin(); }
    const_iterator end() const { return m_table.end(); }

    const CQNameParts& GetEntry(std::uint32_t index) const;

    std::vector<CQNameParts> m_table;
  };

  CFIVocabulary();
  CFIVocabulary(const CFIVocabulary& other);
  CFIVocabulary& operator=(const CFIVocabulary& other);
  virtual ~CFIVocabulary();

  // ---- Names of attributes and elements ----
  // A name is its three parts: another prefix makes another name. An empty prefix or namespace name
  // is none. Parts that are not in their tables are added to them. A name that is there already
  // changes nothing.

  void AddAttribute(const std::string& prefix, const std::string& namespaceName,
                    const std::string& localName);
  void AddElement(const std::string& prefix, const std::string& namespaceName,
                  const std::string& localName);

  // ---- Texts ----
  // Meant: a text that is there already is added once more, and its index for writing is the number
  // of different texts and one. Whoever adds looks first.

  void AddAttributeValue(const std::string& value);
  void AddElementValue(const std::string& value);  // a character chunk
  void AddPrefixName(const std::string& name);
  void AddNamespaceName(const std::string& name);
  void AddLocalName(const std::string& name);

  // True with the index for writing; false, and index is as it was, for a name that is not there.
  bool FindPrefixNameIndex(const std::string& name, std::uint32_t& index) const;
  bool FindNamespaceNameIndex(const std::string& name, std::uint32_t& index) const;
  bool FindLocalNameIndex(const std::string& name, std::uint32_t& index) const;

  // ---- The tables for reading ----

  const CFIQNameTable& GetAttributeNamesTable() const { return m_attributeNames; }
  const CFIStringTable& GetAttributeValuesTable() const { return m_attributeValues; }
  const CFIStringTable& GetCharacterChunksTable() const { return m_characterChunks; }
  const CFIQNameTable& GetElementNamesTable() const { return m_elementNames; }
  const CFIStringTable& GetLocalNamesTable() const { return m_localNames; }
  const CFIStringTable& GetNamespaceNamesTable() const { return m_namespaceNames; }
  const CFIStringTable& GetPrefixNamesTable() const { return m_prefixNames; }

  // Prints the tables for writing to standard output, each in the ascending order of its texts: a
  // line "text, index" for each entry. A name is its local name, namespace name and prefix with a
  // byte 01 between them.
  void Dump() const;

 private:
  friend class CFastInfosetReader;
  friend class CFastInfosetWriter;

  using CIndexMap = detail::CFITextIndexes;

  static constexpr std::uint32_t kMaxEntries = 0x100000;

  // Adds to empty tables for writing what those of a new vocabulary have.
  static void Begin(detail::CFIIndexMaps& maps);

  // The alphabets of every vocabulary. The first differs from the standard's in its lower-case e,
  // which is the one that lexical forms of reals have here. A blank ends each.
  static const std::vector<std::string>& GetAlphabets();

  // The key of a name in the maps, put into room and good as long as that stays.
  static std::string_view FormKey(const std::string& prefix, const std::string& namespaceName,
                                  const std::string& localName, std::string& room);

  void AddQName(const std::string& prefix, const std::string& namespaceName,
                const std::string& localName, CIndexMap& map, CFIQNameTable& table);
  static void AddQNameToVector(const CQNameParts& parts, CFIQNameTable& table);
  static void AddValueToVector(const std::string& value, CFIStringTable& table);
  static void AddValueToMap(std::string_view value, CIndexMap& map);
  static bool FindIndex(const CIndexMap& map, std::string_view key, std::uint32_t& index);
  static void DumpMap(const char* title, const CIndexMap& map);

  std::vector<std::string> m_restrictedAlphabets;

  // For writing.
  detail::CFIIndexMaps m_maps;

  // For reading.
  CFIQNameTable m_attributeNames;
  CFIStringTable m_attributeValues;
  CFIQNameTable m_elementNames;
  CFIStringTable m_characterChunks;
  CFIStringTable m_localNames;
  CFIStringTable m_namespaceNames;
  CFIStringTable m_prefixNames;
};

}  // namespace QzXmlLib16
