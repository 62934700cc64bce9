#include "tests/collections/AnyCol.h"

#include <tuple>
#include <type_traits>
#include <utility>

#include "tests/collections/TypedColKinds.h"

namespace qztest {

namespace {

// Calls by the base what it keeps for its derived classes.
class COpened : public CXmlTypeCollection {
 public:
  static ItemType Type(const CXmlTypeCollection& col) { return (col.*&COpened::GetItemType)(); }
  static std::string Name(const CXmlTypeCollection& col) {
    return (col.*&COpened::GetElementName)();
  }
  static const std::string& Format(const CXmlTypeCollection& col) {
    return (col.*&COpened::GetFormat)();
  }
  static CWhitespaceUtils::WhitespaceRule Rule(const CXmlTypeCollection& col) {
    return (col.*&COpened::GetWhitespaceRule)();
  }
  static const CPrimitiveRestrictions& Restrictions(const CXmlTypeCollection& col) {
    return (col.*&COpened::GetRestrictions)();
  }
  static bool Facets(const CXmlTypeCollection& col) { return (col.*&COpened::HasFacets)(); }

  using Write = void (CXmlObjectBase::*)(CXmlWriter*, bool, const char*,
                                         const CSerializationContext&, bool) const;
  static Write Writing() { return &COpened::ToXml_Int; }
  using Read = CXmlElement* (CXmlTypeCollection::*)(CXmlElement*, CXmlElement*,
                                                    const CSerializationContext&, bool);
  static Read Reading() { return &COpened::FromXml_Int; }
};

}  // namespace

ItemType CAnyCol::GetItemType() const { return COpened::Type(m_col); }
std::string CAnyCol::GetElementName() const { return COpened::Name(m_col); }
const std::string& CAnyCol::GetFormat() const { return COpened::Format(m_col); }
CWhitespaceUtils::WhitespaceRule CAnyCol::GetWhitespaceRule() const { return COpened::Rule(m_col); }
const CPrimitiveRestrictions& CAnyCol::GetRestrictions() const {
  return COpened::Restrictions(m_col);
}
bool CAnyCol::HasFacets() const { return COpened::Facets(m_col); }

void CAnyCol::ToXml_Int(CXmlWriter* writer, bool root, const char* namespaceUri,
                        const CSerializationContext& context, bool optionalChoice) const {
  (m_col.*COpened::Writing())(writer, root, namespaceUri, context, optionalChoice);
}

CXmlElement* CAnyCol::FromXml_Int(CXmlElement* parent, CXmlElement* cursor,
                                  const CSerializationContext& context, bool optionalChoice) {
  return (m_col.*COpened::Reading())(parent, cursor, context, optionalChoice);
}

CAnyCol::CAnyCol(CXmlTypeCollection& col, std::unique_ptr<CXmlTypeCollection> owned)
    : m_col(col), m_owned(std::move(owned)) {}
CAnyCol::~CAnyCol() = default;
CAnyKind::CAnyKind(const KindTraits& traits) : KindTraits(traits) {}
CAnyKind::~CAnyKind() = default;

void CAnyCol::Fill(const char* samples) {
  for (; *samples != '\0'; ++samples) Add(static_cast<std::size_t>(*samples - '0'));
}

Lines CAnyCol::Texts() const {
  Lines texts;
  for (int i = 0; i < GetCount(); ++i) texts.push_back(Item(i));
  return texts;
}

Lines OfEveryKind::TextsOf(const char* samples) const {
  Lines texts;
  for (; *samples != '\0'; ++samples)
    texts.push_back(text(static_cast<std::size_t>(*samples - '0')));
  return texts;
}

std::string NameOfKind(const testing::TestParamInfo<const CAnyKind*>& kind) {
  return kind.param->name;
}

namespace {

template <typename Kind>
typename Kind::Value SampleOf(std::size_t index) {
  return Kind::Samples()[index].value;
}

template <typename Kind>
class CColOf final : public CAnyCol {
 public:
  using Col = typename Kind::Col;
  using Value = typename Kind::Value;

  explicit CColOf(Col& col, std::unique_ptr<CXmlTypeCollection> owned = nullptr)
      : CAnyCol(col, std::move(owned)), m_col(col) {}

  void Add(std::size_t sample) override { m_col.Add(SampleOf<Kind>(sample)); }
  void AddAt(int index, std::size_t sample) override { m_col.AddAt(index, SampleOf<Kind>(sample)); }
  std::string Item(int index) const override { return Text(m_col.Item(index)); }
  void AddOwn(int own) override { m_col.Add(*(m_col.begin() + own)); }
  void AddOwnAt(int index, int own) override { m_col.AddAt(index, *(m_col.begin() + own)); }

  bool BeginsAtItsEnd() override { return m_col.begin() == m_col.end(); }
  std::ptrdiff_t Length() override { return m_col.end() - m_col.begin(); }
  std::ptrdiff_t LengthUnchanged() const override {
    const Col& unchanged = m_col;
    return unchanged.end() - unchanged.begin();
  }
  Lines Walk() const override {
    Lines texts;
    for (const Value& value : m_col) texts.push_back(Text(value));
    return texts;
  }
  void SetFirst(std::size_t sample) override { *m_col.begin() = SampleOf<Kind>(sample); }

 private:
  static std::string Text(const Value& value) { return TextOfValue<Kind>(&value); }

  Col& m_col;
};

// Has its own idea of how many there may be.
template <typename Col>
class CCounted final : public CMade<Col> {
 public:
  void ValidateCount(const CSerializationContext& context) const override {
    if (!context.GetIgnoreInvalidCollectionCounts()) throw CQzException("Never.");
  }
};

template <typename Col>
class CWatched final : public CMade<Col> {
 public:
  explicit CWatched(std::vector<int>& removed) : m_removed(removed) {}
  void Remove(int index) override {
    m_removed.push_back(index);
    CMade<Col>::Remove(index);
  }

 private:
  std::vector<int>& m_removed;
};

// A class that has operations of the same names: those of dates are virtual, the others are not.
template <typename Kind>
class CSameNames final : public CMade<typename Kind::Col> {
 public:
  using Made = CMade<typename Kind::Col>;
  using Value = typename Kind::Value;
  void Add(const Value& value) {
    ++calls;
    Made::Add(value);
  }
  void AddAt(int index, const Value& value) {
    ++calls;
    Made::AddAt(index, value);
  }
  Value Item(int index) const {
    ++calls;
    return Made::Item(index);
  }
  mutable int calls = 0;
};

ColOptions OneOrTwo() {
  ColOptions o;
  o.minOccurs = 1;
  o.maxOccurs = 2;
  return o;
}

// A class as the generator writes it, with one collection.
template <typename Kind>
class CHolder final : public CAnyHolder {
 public:
  using Col = CMade<typename Kind::Col>;
  explicit CHolder(const CTables& tables) : CAnyHolder(tables), m_values(new Col(OneOrTwo())) {}
  Lines Texts() const override { return CColOf<Kind>(*m_values).Texts(); }

 protected:
  void AccessProperty(int, bool read, QzVariant& value) const override {
    AccessCollection(read, value, m_values);
  }
  void Init() override { m_values->Clear(); }

 private:
  const CSmartPtr<Col> m_values;
};

template <typename Kind>
class CKindOf final : public CAnyKind {
 public:
  using Col = typename Kind::Col;
  using Made = std::unique_ptr<CAnyCol>;

  CKindOf()
      : CAnyKind({Kind::kName, Kind::kType, Kind::kWritten, Kind::kIsDate, &TextOfValue<Kind>,
                  std::is_convertible_v<Col*, CXmlTypeCollection*>,
                  std::is_convertible_v<Col*, CdatetimeBaseCol*>,
                  std::is_convertible_v<Col*, CInstanceMonitor*>,
                  std::is_base_of_v<CInstanceMonitor, Col>}) {}

  std::string Text(std::size_t sample) const override { return Kind::Samples()[sample].text; }

  Made Make(const ColOptions& o) const override { return Of(new CMade<Col>(o)); }
  Made MakeCounted() const override { return Of(new CCounted<Col>); }
  Made MakeWatched(std::vector<int>& removed) const override {
    return Of(new CWatched<Col>(removed));
  }
  std::unique_ptr<CAnyHolder> MakeHolder(const CTables& tables) const override {
    return std::unique_ptr<CAnyHolder>(new CHolder<Kind>(tables));
  }

  bool IsItsOwnBase() const override {
    const CSmartPtr<Col> col(new CMade<Col>);
    return col == col->GetBase();
  }
  void AskForTargetNamespace() const override {
    const CSmartPtr<Col> col(new CMade<Col>);
    col->GetTargetNamespace();
  }
  SameNames TrySameNames() const override {
    SameNames seen;
    CSameNames<Kind> col;
    Col& known = col;
    known.Add(SampleOf<Kind>(0));
    seen.callsByAdd = col.calls;
    known.AddAt(0, SampleOf<Kind>(1));
    seen.callsByAddAt = col.calls;
    const typename Kind::Value item = known.Item(0);
    seen.item = TextOfValue<Kind>(&item);
    seen.callsByItem = col.calls;
    return seen;
  }

 private:
  static Made Of(Col* made) {
    return Made(new CColOf<Kind>(*made, std::unique_ptr<CXmlTypeCollection>(made)));
  }
};

template <typename... Kind>
std::vector<const CAnyKind*> KindsOf() {
  static const std::tuple<CKindOf<Kind>...> kinds;
  return {&std::get<CKindOf<Kind>>(kinds)...};
}

}  // namespace

const std::vector<const CAnyKind*>& AllKinds() {
  static const std::vector<const CAnyKind*> kinds =
      KindsOf<I1, I2, I4, I8, Ui1, Ui2, Ui4, Ui8, R4, R8, Decimal, Integer, String, Boolean,
              HexBinary, Base64Binary, Duration, Year, Month, Day, YearMonth, MonthDay, Date,
              Datetime, Time>();
  return kinds;
}

}  // namespace qztest
