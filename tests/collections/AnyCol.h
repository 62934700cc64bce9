#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "tests/collections/TypedCols.h"
#include "tests/support/GeneratedTable.h"

// The collections of all kinds behind one interface, so that what is tested of each of them is
// compiled once. A value is one of the three samples of its kind, and is named by its index there.
namespace qztest {

// A collection of some kind, its own or somebody else's.
class CAnyCol {
 public:
  CAnyCol(CXmlTypeCollection& col, std::unique_ptr<CXmlTypeCollection> owned);
  virtual ~CAnyCol();
  CAnyCol(const CAnyCol&) = delete;
  CAnyCol& operator=(const CAnyCol&) = delete;

  CXmlTypeCollection& base() { return m_col; }
  int GetCount() const { return m_col.GetCount(); }
  void Clear() { m_col.Clear(); }
  void Remove(int index) { m_col.Remove(index); }

  // --- What it keeps for derived classes and for the walks
  ItemType GetItemType() const;
  std::string GetElementName() const;
  const std::string& GetFormat() const;
  CWhitespaceUtils::WhitespaceRule GetWhitespaceRule() const;
  const CPrimitiveRestrictions& GetRestrictions() const;
  bool HasFacets() const;
  void ToXml_Int(CXmlWriter* writer, bool root, const char* namespaceUri,
                 const CSerializationContext& context, bool optionalChoice) const;
  CXmlElement* FromXml_Int(CXmlElement* parent, CXmlElement* cursor,
                           const CSerializationContext& context, bool optionalChoice);

  // --- The calls of the class of its kind
  virtual void Add(std::size_t sample) = 0;
  virtual void AddAt(int index, std::size_t sample) = 0;
  virtual std::string Item(int index) const = 0;  // the value's text
  virtual void AddOwn(int own) = 0;               // what is own places behind begin()
  virtual void AddOwnAt(int index, int own) = 0;

  // --- By its iterators
  virtual bool BeginsAtItsEnd() = 0;
  virtual std::ptrdiff_t Length() = 0;
  virtual std::ptrdiff_t LengthUnchanged() const = 0;  // by those of a constant
  virtual Lines Walk() const = 0;                      // the texts
  virtual void SetFirst(std::size_t sample) = 0;

  // --- By the calls above
  void Fill(const char* samples);  // adds these, a digit each
  Lines Texts() const;             // by Item

 private:
  CXmlTypeCollection& m_col;
  const std::unique_ptr<CXmlTypeCollection> m_owned;
};

// What a class answers that has operations named as those of the collection that it derives from,
// called by the collection's type.
struct SameNames {
  int callsByAdd;    // how often its own were called until then
  int callsByAddAt;  // of the second sample, in front
  int callsByItem;   // of the first item
  std::string item;
};

// An object with one property, a collection of 1 to 2 items.
class CAnyHolder : public CTableObject {
 public:
  using CTableObject::CTableObject;
  virtual Lines Texts() const = 0;  // of the collection, by Item
};

// What is known of a kind.
struct KindTraits {
  const char* name;  // of its class
  ItemType type;     // of its class
  ItemType written;  // what a writer is told
  bool isDate;       // whether the values are CDateTime
  CColListener::TextOf textOf;

  // --- How its class is derived
  bool isTypeCollection;  // by a pointer that is converted without being asked
  bool isDateCollection;
  bool isInstanceMonitor;
  bool hasInstanceMonitor;  // among its bases, reached or not
};

// One kind.
class CAnyKind : public KindTraits {
 public:
  virtual ~CAnyKind();

  virtual std::string Text(std::size_t sample) const = 0;
  virtual std::unique_ptr<CAnyCol> Make(const ColOptions& o = ColOptions()) const = 0;
  // With a ValidateCount that throws CQzException "Never." unless the context ignores counts.
  virtual std::unique_ptr<CAnyCol> MakeCounted() const = 0;
  // Notes the indexes of its Remove.
  virtual std::unique_ptr<CAnyCol> MakeWatched(std::vector<int>& removed) const = 0;
  virtual std::unique_ptr<CAnyHolder> MakeHolder(const CTables& tables) const = 0;

  // Whether a handle to a new one is the object that it gives as its base.
  virtual bool IsItsOwnBase() const = 0;
  // Asks one behind a handle for its target namespace.
  virtual void AskForTargetNamespace() const = 0;
  virtual SameNames TrySameNames() const = 0;

 protected:
  explicit CAnyKind(const KindTraits& traits);
};

// Every kind there is, as parameters of tests, and how gtest names them.
const std::vector<const CAnyKind*>& AllKinds();
std::string NameOfKind(const testing::TestParamInfo<const CAnyKind*>& kind);

class OfEveryKind : public testing::TestWithParam<const CAnyKind*> {
 protected:
  const CAnyKind& kind() const { return *GetParam(); }
  std::string text(std::size_t sample) const { return kind().Text(sample); }
  Lines TextsOf(const char* samples) const;
};

}  // namespace qztest
