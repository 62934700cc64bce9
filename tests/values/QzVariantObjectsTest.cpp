// Variants that hold objects and collections.
#include <cstdint>
#include <utility>

#include "qzxml/collections/ElementCol.h"
#include "qzxml/values/QzVariant.h"
#include "tests/serialization/Note.h"
#include "tests/support/QzTest.h"

using QzXmlLib16::CElementCol;
using QzXmlLib16::CXmlCollectionBase;
using QzXmlLib16::CXmlObjectBase;
using QzXmlLib16::QzVariant;

namespace {

std::int32_t CountReferences(CXmlObjectBase& object) {
  object.AddRef();
  return object.Release();
}

CSmartPtr<CElementCol> MakeCollection() {
  return CSmartPtr<CElementCol>(new CElementCol("urn:notes", "##any", "urn:notes", 0, -1));
}

}  // namespace

TEST(QzVariant, AnObjectIsHeldByOneReference) {
  bool deleted = false;
  auto* const note = new qztest::CNote(&deleted);
  {
    const CSmartPtr<CXmlObjectBase> holder(note);
    EXPECT_EQ(1, CountReferences(*note));
    QzVariant value;
    value.SetXmlObject(note);
    EXPECT_EQ(27, value.GetTypeAsEnum());
    EXPECT_EQ(2, CountReferences(*note));
    EXPECT_EQ(note, value.GetXmlObject());
    EXPECT_EQ(2, CountReferences(*note));
    {
      QzVariant copy;
      copy = value;
      EXPECT_EQ(3, CountReferences(*note));
      EXPECT_EQ(note, copy.GetXmlObject());
    }
    EXPECT_EQ(2, CountReferences(*note));
    {
      const QzVariant moved(std::move(value));
      EXPECT_EQ(2, CountReferences(*note));
    }
    EXPECT_EQ(1, CountReferences(*note));
    value.SetXmlObject(note);
    value.SetNil();
    EXPECT_EQ(1, CountReferences(*note));
    EXPECT_EQ(27, value.GetTypeAsEnum());
    EXPECT_EQ(nullptr, value.GetXmlObject());
    value.SetXmlObject(note);
    value.Clear();
    EXPECT_EQ(1, CountReferences(*note));
    EXPECT_FALSE(deleted);
  }
  EXPECT_TRUE(deleted);
}

TEST(QzVariant, TheLastVariantDeletesItsObject) {
  bool deleted = false;
  {
    QzVariant value;
    value.SetXmlObject(new qztest::CNote(&deleted));
    value.SetXmlObject(value.GetXmlObject());
    EXPECT_FALSE(deleted);
  }
  EXPECT_TRUE(deleted);
}

TEST(QzVariant, AnObjectSetAgainIsNotReleasedInBetween) {
  bool deleted = false;
  QzVariant value;
  auto* const note = new qztest::CNote(&deleted);
  value.SetXmlObject(note);
  value.SetXmlObject(note);
  EXPECT_FALSE(deleted);
  EXPECT_EQ(1, CountReferences(*note));
}

TEST(QzVariant, ACollectionCanBeReadAsItsObject) {
  const CSmartPtr<CElementCol> collection = MakeCollection();
  {
    QzVariant value;
    value.SetXmlCollection(collection);
    EXPECT_EQ(28, value.GetTypeAsEnum());
    EXPECT_EQ(2, CountReferences(*collection));
    EXPECT_EQ(static_cast<CXmlCollectionBase*>(collection), value.GetXmlCollection());
    EXPECT_EQ(static_cast<CXmlObjectBase*>(collection), value.GetXmlObject());
    const QzVariant copy(value);
    EXPECT_EQ(3, CountReferences(*collection));
    value.SetXmlCollection(collection);
    EXPECT_EQ(3, CountReferences(*collection));
  }
  EXPECT_EQ(1, CountReferences(*collection));
}

TEST(QzVariant, ANullObjectIsStoredWithoutACount) {
  QzVariant value;
  value.SetXmlObject(nullptr);
  EXPECT_EQ(27, value.GetTypeAsEnum());
  EXPECT_TRUE(value.IsValid());
  EXPECT_EQ(nullptr, value.GetXmlObject());
  const QzVariant copy(value);
  EXPECT_EQ(nullptr, copy.GetXmlObject());

  QzVariant collection;
  collection.SetXmlCollection(nullptr);
  EXPECT_EQ(28, collection.GetTypeAsEnum());
  EXPECT_EQ(nullptr, collection.GetXmlObject());
  EXPECT_QZ_ASSERT("m_type == ItemType_XmlCollection && m_pXmlCol != 0",
                   collection.GetXmlCollection());
  const QzVariant collectionCopy(collection);
  EXPECT_EQ(28, collectionCopy.GetTypeAsEnum());
}

TEST(QzVariant, AnObjectIsOnlyThereForItsKind) {
  QzVariant value;
  value.SetI4(1);
  EXPECT_QZ_ASSERT("m_type == ItemType_XmlObjectBase", value.GetXmlObject());
  EXPECT_QZ_ASSERT("m_type == ItemType_XmlCollection && m_pXmlCol != 0", value.GetXmlCollection());
  value.SetXmlObject(nullptr);
  EXPECT_QZ_ASSERT("m_type == ItemType_XmlCollection && m_pXmlCol != 0", value.GetXmlCollection());
}

// Carries a variant of its own.
class CCarrier : public qztest::CNote {
 public:
  explicit CCarrier(bool* deleted) : CNote(deleted) {}
  QzVariant carried;
};

TEST(QzVariant, TakesWhatItsOwnObjectCarries) {
  for (const bool isMoved : {false, true}) {
    bool deleted = false;
    QzVariant value;
    auto* const carrier = new CCarrier(&deleted);
    carrier->carried.SetString("a text that is not short at all");
    value.SetXmlObject(carrier);
    if (isMoved) {
      value = std::move(carrier->carried);
    } else {
      value = carrier->carried;
    }
    EXPECT_TRUE(deleted);
    EXPECT_EQ("a text that is not short at all", value.GetString());
  }
}
