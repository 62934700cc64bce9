#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <string>
#include <string_view>

#include "qzxml/fastinfoset/FIKnownIntegers.h"
#include "qzxml/fastinfoset/FITextIndexesFind.h"
#include "qzxml/fastinfoset/FastInfosetContext.h"
#include "qzxml/fastinfoset/FastInfosetName.h"
#include "qzxml/fastinfoset/FastInfosetRunHost.h"
#include "qzxml/fastinfoset/FastInfosetWriterForms.h"
#include "qzxml/fastinfoset/FastInfosetWriterNames.h"
#include "qzxml/xml/ShortText.h"

namespace QzXmlLib16::detail {

// Writes many elements into a Fast Infoset writer, whose place in its piece it keeps for itself
// meanwhile: what is in the piece, and what is open in the writer, is right again behind Interrupt
// and Finish. As XmlTextRun is for text.
//
// The operations that are met for each element are inline in FastInfosetRunPut.h.
//
// Each Put... does what the calls of the writer do, or answers false and has changed nothing that
// could be seen: where there is no room, where a name or a value is not the ordinary one, and where
// no element is open. Then Interrupt makes the writer ready for its own calls, and Resume goes on
// behind them. A name that is new to the document is written in full.
//
// The first octet of an element says whether it has attributes. It is put without that, and gets it
// with the first attribute; while nothing stands behind it, an interruption takes it back, and the
// element becomes the writer's pending one.
//
// A run that an exception ends leaves in the writer what was put until then.
class FastInfosetRun {
 public:
  // The octets of a number under an algorithm, as many as it has, in the low end of bits; none for
  // a number that has none under it.
  struct Octets {
    std::uint64_t bits;
    std::uint32_t size;
  };

  class Element;

  explicit FastInfosetRun(FastInfosetRunHost& host);
  FastInfosetRun(const FastInfosetRun&) = delete;
  FastInfosetRun& operator=(const FastInfosetRun&) = delete;
  ~FastInfosetRun() { GiveBack(); }

  // ---- The writer's own calls ----

  // Behind this the writer is as it would be without the run.
  void Interrupt();
  // The innermost element is the one of before.
  void Resume();
  // The last call; the innermost element is the one that was open at first.
  void Finish() { Interrupt(); }

  // ---- Elements ----

  // Both are always done. The name has to live until the end.
  void BeginElement(Element& element, const FastInfosetName& name);
  void EndElement(Element& element);

  // ---- Values ----
  // Each is given with its text and its kind. For a printed one, octets answers what it is under an
  // algorithm; its text has no zero byte, is not empty, and stands in kPrintedRoom bytes.
  static constexpr std::size_t kPrintedRoom = 64;

  bool PutTextElement(const FastInfosetName& name, std::string_view text, ItemType type);
  template <typename GetOctets>
  bool PutPrintedElement(const FastInfosetName& name, std::string_view text, ItemType type,
                         GetOctets octets);
  // An attribute in no namespace; its text is not empty.
  bool PutTextAttribute(const FastInfosetName& name, std::string_view text, ItemType type);
  template <typename GetOctets>
  bool PutPrintedAttribute(const FastInfosetName& name, std::string_view text, ItemType type,
                           GetOctets octets);
  // The same for a number of 32 bits, which prints itself.
  template <typename Print, typename GetOctets>
  bool PutIntegerElement(const FastInfosetName& name, std::int32_t number, Print print,
                         GetOctets octets);
  template <typename Print, typename GetOctets>
  bool PutIntegerAttribute(const FastInfosetName& name, std::int32_t number, Print print,
                           GetOctets octets);
  // Text of the innermost element, not empty.
  bool PutOwnText(std::string_view text, ItemType type);

  // Whether so much has been written that the objects behind it are none that have just been made.
  bool IsLong() const { return m_pieces >= kLong; }

 private:
  // How far an element is written. Of those that are odd an end still has to be written, which
  // stands in front of a child.
  enum class State : unsigned char {
    Headed = 0,      // the head says that there are no attributes
    Attributes = 1,  // the head says that there are some
    Begun = 2,       // the head stands there, and nothing behind it
    HalfEnded = 3,   // content, the last of which is a child
    Content = 4,
    Pending = 6,  // it is the pending one of the writer
  };

  using Encoding = CFastInfosetContext::EncodedCharacterString;

  struct Table {
    CFITextIndexes* texts;
    std::uint32_t maxAddLength;
  };

  // A text with what it is looked for by.
  struct Key {
    std::string_view text;
    std::uint64_t key;
  };

  // Where names are written, of elements or of attributes.
  struct Names {
    unsigned literal;  // the mark of a name in full
    CFITextIndexes& table;
    CFIKnownNames::Places& places;  // of this name
  };

  // Where the parts of a new name are in the tables, or may be added.
  struct Places {
    CFITextIndexes::Place prefix;         // where there is one
    CFITextIndexes::Place namespaceName;  // unless it is m_indexedNamespace
    CFITextIndexes::Place local;
    CFITextIndexes::Place whole;
  };

  // What has been added to the tables for a new name.
  struct Added {
    bool prefix;
    bool namespaceName;
    bool local;
    bool whole;
  };

  static constexpr unsigned kLiteralElement = 0x3C;
  static constexpr unsigned kLiteralAttribute = 0x78;
  static constexpr std::uint32_t kLong = 1;  // pieces

  static constexpr char kTerminator = '\xF0';
  static constexpr char kTwoTerminators = '\xFF';
  // What an element takes in front of its name, and the name.
  static constexpr std::size_t kElementRoom = 2 + CFIKnownNames::kRoom;
  // A value may be copied in whole steps.
  static constexpr std::size_t kValueRoom = kFIValueHead + sizeof(std::uint64_t);

  std::size_t GetRoom() const { return static_cast<std::size_t>(m_place.limit - m_place.out); }
  bool HasRoom(std::size_t size) { return GetRoom() >= size || MakeRoom(size); }
  bool MakeRoom(std::size_t size);
  // Of the ends that have to stand in front of a child.
  std::size_t GetOpenSize() const { return static_cast<unsigned>(m_state) & 1; }
  char* Open(char* out) const;
  char* BeginValue(const FastInfosetName& name, std::size_t room);
  bool EndValue(const FastInfosetName& name, char* out);
  char* BeginAttribute(const FastInfosetName& name, std::size_t room);
  bool EndAttribute(const FastInfosetName& name, char* out);
  template <typename Form>
  char* PutText(char* out, std::string_view text, ItemType type);
  template <typename Form, typename GetOctets>
  char* PutNewPrinted(char* out, std::string_view text, Encoding as, GetOctets octets,
                      bool add) const;
  template <typename Form, typename GetOctets>
  char* PutPrinted(char* out, std::string_view text, ItemType type, GetOctets octets,
                   std::uint32_t* index = nullptr);
  template <typename Form, typename Print, typename GetOctets>
  char* PutInteger(char* out, std::int32_t number, Print print, GetOctets octets);
  template <typename Form>
  static char* PutInAlphabet(char* out, std::string_view text, Encoding as, bool add);
  template <typename Form>
  char* PutInFull(char* out, std::string_view text, Encoding as, bool add) const;
  template <typename Form>
  char* PutPrintedInFull(char* out, std::string_view text, Encoding as, bool add) const;
  template <typename Form>
  const Table& GetTable() const;
  // Answers the index that the text has now; 0 where the table is full.
  std::uint32_t AddName(CFITextIndexes& table, const CFITextIndexes::Place& place,
                        std::string_view text, std::uint64_t key) const {
    const std::uint32_t index = GetNextIndex(table);
    if (index != 0) table.AddAt(place, text, key, index);
    return index;
  }
  std::uint32_t AddValue(CFITextIndexes& table, const CFITextIndexes::Place& place,
                         std::string_view text, std::uint64_t key) const {
    const std::uint32_t index = GetNextIndex(table);
    if (index != 0) table.AddNewAt(place, text, key, index);
    return index;
  }
  std::uint32_t GetNextIndex(const CFITextIndexes& table) const {
    const std::size_t count = table.GetCount();
    return count < m_parts.maxEntries ? static_cast<std::uint32_t>(count + 1) : 0;
  }
  static bool HasZero(std::string_view text);
  static char* PutOctets(char* out, const Octets& octets);
  // Until the next Lend.
  void GiveBack() {
    m_place.isHalfPending = m_state == State::HalfEnded;
    if (m_place.out != nullptr) m_host.TakeBack(m_place);
    m_place.out = nullptr;
  }
  void WritePending(bool hasAttributes);
  void Enter(Element& element, const FastInfosetName& name);
  void BeginInWriter(Element& element, const FastInfosetName& name);
  void EndInWriter(const Element& element);
  static void Settle(CXmlWriter::CXmlWriterContext& context, State state);

  // ---- Names that are not known by their id ----

  void BeginOtherElement(Element& element, const FastInfosetName& name);
  char* PutOtherElementName(const FastInfosetName& name, std::size_t room);
  char* PutOtherAttributeName(const FastInfosetName& name, std::size_t room);
  bool TakesPrefix(const FastInfosetName& name);
  bool FindPrefix(const FastInfosetName& name, const std::string*& prefix);
  Key WholeOf(const FastInfosetName& name, const std::string* prefix);
  static CFITextIndexes::Place Look(CFITextIndexes& table, const FastInfosetName::Text& part);
  char* PutNameInFull(char* out, unsigned mark, const FastInfosetName& name,
                      const std::string* prefix);
  static char* PutLocalName(char* out, const FastInfosetName& name, std::uint32_t index);
  std::uint32_t FindNamespace(const FastInfosetName& name);
  char* PutUnknownName(char* out, const FastInfosetName& name, const std::string* prefix,
                       const Names& names, std::uint32_t& index);
  char* PutNameAgain(char* out, const FastInfosetName& name, const Names& names);
  std::uint32_t Learn(const FastInfosetName& name, const std::string* prefix, const Key& whole,
                      CFITextIndexes& names);
  void Unlearn(const FastInfosetName& name, const std::string* prefix, const Added& added,
               CFITextIndexes& names);
  void UnlearnElement(const FastInfosetName& name, const Added& added);
  bool ForgetElement(const FastInfosetName& name);
  bool ForgetAttribute(const FastInfosetName& name);

 public:
  // An element that is open; not copied, and at its place until its end.
  class Element {
   public:
    Element() = default;
    Element(const Element&) = delete;
    Element& operator=(const Element&) = delete;

   private:
    friend class FastInfosetRun;

    Element* m_outer = nullptr;
    Element* m_inner = nullptr;  // while that is open
    const FastInfosetName* m_name = nullptr;
    CXmlWriter::CXmlWriterContext* m_context = nullptr;  // the writer's, where it has one
    Added m_added = {};                                  // by its name, which came with it
  };

 private:
  FastInfosetRunHost& m_host;
  const FastInfosetRunHost::Parts m_parts;
  const Encoding* const m_encodings;  // of the kinds
  const bool m_isLocalUtf8;
  const bool m_writesUtf8;  // text as it stands
  const Table m_attributeValues;
  const Table m_chunks;
  FastInfosetRunHost::Place m_place;
  State m_state = State::Content;  // of the innermost element; those around it have some content
  char* m_head = nullptr;          // of the innermost element, where it has begun
  std::uint32_t m_elements = 0;    // that had no context, since the last interruption
  std::uint32_t m_pieces = 0;
  Places m_new = {};                   // of the name that was new last
  Added m_added = {};                  // for it
  const char* m_newAt = nullptr;       // where it was put; null in another piece
  std::uint64_t m_namespaceState = 0;  // as the known names have it
  std::uint64_t m_attributeState = 0;  // that of all attributes
  // Of these namespaces it is known that elements take no prefix, and which index it has.
  const std::string* m_plainNamespace = nullptr;
  const std::string* m_indexedNamespace = nullptr;
  std::uint32_t m_namespaceIndex = 0;
  Element m_base;
  Element* m_innermost;
};

template <>
inline const FastInfosetRun::Table& FastInfosetRun::GetTable<CFIAttributeForm>() const {
  return m_attributeValues;
}
template <>
inline const FastInfosetRun::Table& FastInfosetRun::GetTable<CFIChunkForm>() const {
  return m_chunks;
}

}  // namespace QzXmlLib16::detail
