#include <unistd.h>

#include <cstdio>
#include <fstream>
#include <iterator>

#include "qzxml/fastinfoset/FastInfosetContext.h"
#include "qzxml/runtime/QzZip.h"
#include "qzxml/serialization/XmlObjectBase.h"
#include "qzxml/values/BinaryData.h"
#include "tests/fastinfoset/Written.h"
#include "tests/serialization/Note.h"
#include "tests/support/QzTest.h"

namespace QzXmlLib16 {
namespace {

using qztest::CNote;
using qztest::Digits;
using qztest::HexOf;

CNote Shopping() {
  CNote note;
  note.to = "Ann";
  note.lines = {"Milk", "Milk"};
  return note;
}

// <AA:note to="Ann"><AA:line>Milk</AA:line><AA:line>Milk</AA:line></AA:note>; "urn:notes" has 9
// octets.
std::string ShoppingOctets() {
  return Digits("E0000001 00 78F0 3F 014141 08") + HexOf("urn:notes") + "03" + HexOf("note") +
         Digits("78 01") + HexOf("to") + "42" + HexOf("Ann") + "F0" + Digits("3F 81 81 03") +
         HexOf("line") + "9201" + HexOf("Milk") + Digits("F0 01 A0 FF F0");
}

std::string FileOctets(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  EXPECT_TRUE(file) << path;
  return HexOf(std::string(std::istreambuf_iterator<char>(file), {}));
}

// A file of the test's own, gone with it.
class TemporaryFile {
 public:
  explicit TemporaryFile(const std::string& name)
      : m_path(::testing::TempDir() + "qzxml-" + std::to_string(getpid()) + "-" + name) {}
  ~TemporaryFile() { std::remove(m_path.c_str()); }
  const std::string& path() const { return m_path; }

 private:
  std::string m_path;
};

TEST(XmlObjectBaseFastInfoset, AnObjectIsWrittenAsTheRootInItsTargetNamespace) {
  const CNote note = Shopping();
  const CSerializationContext context;
  EXPECT_EQ(ShoppingOctets(), note.ToFastInfosetStream(FInfoDecl_None, context).GetAsHexString());
  EXPECT_TRUE(note.call.root);
  EXPECT_FALSE(note.call.optionalChoice);
  EXPECT_EQ("urn:notes", note.call.namespaceUri);
  EXPECT_EQ(&context, note.call.context);
  EXPECT_EQ(ShoppingOctets(), note.ToFastInfosetStream().GetAsHexString());
}

TEST(XmlObjectBaseFastInfoset, TheDeclarationStandsInFront) {
  EXPECT_EQ(HexOf("<?xml version='1.0' encoding='finf'?>") + ShoppingOctets(),
            Shopping().ToFastInfosetStream(FInfoDecl_V10).GetAsHexString());
}

TEST(XmlObjectBaseFastInfoset, TheOptionsOfTheContextCount) {
  const CSerializationContext context;
  context.GetFIContext().SetUseGeneratedVocabulary(true);
  context.GetFIContext().SetExternalVocabularyURI("u");
  context.GetFIContext().GetVocabulary()->AddElement("", "", "other");
  CNote note;
  note.SetElementName("other");
  const std::string octets = note.ToFastInfosetStream(FInfoDecl_None, context).GetAsHexString();
  EXPECT_EQ(Digits("E0000001 20 1000 00 75"), octets.substr(0, 18));
}

TEST(XmlObjectBaseFastInfoset, DeclarationAndDocumentAreCompressedTogether) {
  CNote note = Shopping();
  note.lines.assign(100, "Bread and butter");
  const CSerializationContext context;
  const CBinaryData plain = note.ToFastInfosetStream(FInfoDecl_V11, context);
  for (const CompressionType type : {CompressionType_GZip, CompressionType_ZLib}) {
    const CBinaryData packed = note.ToFastInfosetStream(FInfoDecl_V11, context, type);
    EXPECT_LT(packed.GetLength(), plain.GetLength());
    CBinaryData expanded;
    ASSERT_TRUE(CQzZip::Decompress(packed.GetData(), packed.GetLength(), expanded));
    EXPECT_EQ(plain.GetAsHexString(), expanded.GetAsHexString());
  }
}

TEST(XmlObjectBaseFastInfoset, AFileHasTheOctetsOfTheStream) {
  CNote note = Shopping();
  const TemporaryFile file("note.finf");
  note.ToFastInfosetFile(file.path().c_str());
  EXPECT_EQ(ShoppingOctets(), FileOctets(file.path()));

  note.lines.assign(100, "Bread and butter");
  const CSerializationContext context;
  note.ToFastInfosetFile(file.path().c_str(), FInfoDecl_Encoding, context, CompressionType_GZip);
  EXPECT_EQ(
      note.ToFastInfosetStream(FInfoDecl_Encoding, context, CompressionType_GZip).GetAsHexString(),
      FileOctets(file.path()));
}

// Counts the calls that the entry for files makes.
class CCounted : public CNote {
 public:
  CBinaryData ToFastInfosetStream(FInfoDecl, const CSerializationContext&,
                                  CompressionType) const override {
    ++calls;
    return CBinaryData("own");
  }
  mutable int calls = 0;
};

TEST(XmlObjectBaseFastInfoset, AFileIsMadeOfWhatTheObjectGivesAsAStream) {
  const CCounted counted;
  const TemporaryFile file("own.finf");
  AsyncToXmlFile(true);
  counted.ToFastInfosetFile(file.path().c_str());
  AsyncToXmlFile(false);
  EXPECT_EQ(1, counted.calls);
  EXPECT_EQ(HexOf("own"), FileOctets(file.path()));
}

TEST(XmlObjectBaseFastInfoset, FilesAreNotForZLib) {
  const CCounted counted;
  const TemporaryFile file("zlib.finf");
  EXPECT_QZ_THROW(
      CQzException, "ZLIB Compression only available for To Stream methods.",
      counted.ToFastInfosetFile(file.path().c_str(), FInfoDecl_None,
                                CSerializationContext::GetDefaultContext(), CompressionType_ZLib));
  EXPECT_EQ(0, counted.calls);
  EXPECT_FALSE(std::ifstream(file.path()).is_open());
}

}  // namespace
}  // namespace QzXmlLib16
