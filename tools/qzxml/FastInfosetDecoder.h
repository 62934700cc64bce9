#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tools/qzxml/Content.h"
#include "tools/qzxml/FastInfosetOctets.h"
#include "tools/qzxml/Progress.h"

namespace qztool {

// The tables of a Fast Infoset document as they are at its end; an entry's index counts from 1.
struct CFastInfosetTables {
  // A name as indexes into the tables of its parts; 0 for none.
  struct Name {
    std::uint32_t prefix = 0;
    std::uint32_t namespaceName = 0;
    std::uint32_t localName = 0;
  };

  static constexpr std::size_t kMaxEntries = std::size_t{1} << 20;

  std::vector<std::string> alphabets;   // those that the document adds
  std::vector<std::string> algorithms;  // the same
  std::vector<std::string> prefixes = {"xml"};
  std::vector<std::string> namespaceNames = {"http://www.w3.org/XML/1998/namespace"};
  std::vector<std::string> localNames;
  std::vector<std::string> otherNames;  // targets of instructions, names of entities, notations
  std::vector<std::string> otherUris;   // system and public identifiers
  std::vector<std::string> attributeValues;
  std::vector<std::string> characterChunks;
  std::vector<std::string> otherStrings;  // comments, data of instructions, the version
  std::vector<Name> elementNames;
  std::vector<Name> attributeNames;
  std::string externalVocabulary;  // the URI of tables that are somewhere else
};

// Reads a Fast Infoset document whole: what X.891 lets a document have, with the places of texts,
// comments and the rest that CFastInfosetReader, made for objects, steps over, and with tables that
// the document brings along. Not to be had are an external vocabulary and algorithms of others.
class CFastInfosetDecoder {
 public:
  // With rows each octet is told of. All that is handed over must outlive this.
  CFastInfosetDecoder(const std::string& octets, CContentDocument& document,
                      const OctetRows& rows = NoRows());

  // For those who only look: texts of unknown algorithms are their octets in hexadecimal digits
  // instead of a failure.
  void AcceptUnknownAlgorithms() { m_acceptUnknown = true; }

  // Once. Throws CDocumentFailure "... at offset %d".
  void Run(CProgress& progress);

  const CFastInfosetTables& GetTables() const { return m_tables; }
  // The text in front of the identification; "" for none.
  const std::string& GetDeclaration() const { return m_declaration; }

 private:
  using Strings = std::vector<std::string>;
  using Names = std::vector<CFastInfosetTables::Name>;

  static const OctetRows& NoRows();

  // The head (FastInfosetDecoderHead.cpp)
  void ReadHead();
  void ReadAdditionalData();
  void ReadVocabulary();
  void ReadStrings(Strings& table, std::string_view what);
  void ReadEncodedStrings(Strings& table, std::string_view what);
  void ReadSurrogates(Names& table, std::string_view what);
  void ReadNotations();
  void ReadUnparsedEntities();
  void ReadDocumentType(std::uint32_t first);
  void EndDocumentType();
  std::string ReadOctetString(std::string_view what);

  // The body
  void ReadDocument(CProgress& progress);
  void ReadElement(std::uint32_t first);
  void BeginElement(std::uint32_t first);
  void ReadDeclarations();
  bool ReadAttributes();
  void ReadAttribute(std::uint32_t first);
  void ReadChildren();
  void ReadText(std::uint32_t first);
  void ReadInstruction(bool isInDocumentType);
  void ReadComment();
  void ReadReference(std::uint32_t first);

  // Names and strings
  CFastInfosetTables::Name ReadName(std::uint32_t flags, Names& table);
  std::uint32_t ReadIdentifying(Strings& table, std::string_view what);
  std::string ReadOther(Strings& table, std::string_view what);
  CFastInfosetText ReadNonIdentifying(std::uint32_t first, Strings& table, std::string_view what);
  void EndLiteral(const std::string& text, bool isAdded, Strings& table);
  void CheckKnown(const CFastInfosetText& text);
  template <typename Entry>
  const Entry& GetEntry(const std::vector<Entry>& table, std::uint32_t index,
                        std::string_view what) const {
    if (index == 0 || index > table.size()) FailEntry(index, table.size(), what);
    return table[index - 1];
  }
  [[noreturn]] void FailEntry(std::uint32_t index, std::size_t size, std::string_view what) const;
  std::string_view GetPart(const Strings& table, std::uint32_t index) const;
  template <typename Entry>
  static void AddEntry(std::vector<Entry>& table, Entry entry) {
    if (table.size() < CFastInfosetTables::kMaxEntries) table.push_back(std::move(entry));
  }
  std::string Describe(const CFastInfosetTables::Name& name) const;

  CContentDocument& m_document;
  CContentBuilder m_builder;
  CFastInfosetOctets m_octets;
  CFastInfosetTables m_tables;
  CProgress* m_progress = nullptr;
  std::string m_declaration;
  std::string m_documentType;  // the identifiers, as a declaration has them
  bool m_hasDocumentType = false;
  bool m_isParentEnded = false;  // an octet has ended an element and the one around it
  bool m_acceptUnknown = false;
};

}  // namespace qztool
