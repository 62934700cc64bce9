#include <algorithm>
#include <fstream>
#include <iterator>
#include <map>

#include "tests/support/QzTest.h"
#include "tests/tools/emit/OrderModel.h"
#include "tools/generator/emit/Emit.h"

using namespace qzxml::generator;

namespace {

std::map<std::string, std::string> Emit(const Model& model, const EmitOptions& options) {
  std::map<std::string, std::string> files;
  for (const SourceFile& file : WriteSources(model, options)) files[file.path] = file.text;
  return files;
}

EmitOptions OrderOptions() {
  EmitOptions options;
  options.schemaNames = {"order.xsd"};
  return options;
}

std::string Golden(const std::string& path) {
  std::ifstream stream(std::string(QZXML_TEST_DIRECTORY) + "/tools/emit/golden/" + path,
                       std::ios::binary);
  return std::string((std::istreambuf_iterator<char>(stream)), std::istreambuf_iterator<char>());
}

// A namespace of so many classes, each with an int.
struct ManyClasses {
  explicit ManyClasses(int count) {
    model.builtIns.push_back(std::make_unique<BoundSimpleType>());
    type = model.builtIns.back().get();
    type->constant = "kXsdInt";
    type->kind = "ItemType_i4";
    type->cppType = "std::int32_t";
    type->isPassedByValue = true;
    model.namespaces.push_back(std::make_unique<BoundNamespace>());
    BoundNamespace& where = *model.namespaces.back();
    where.cppName = where.fileStem = "many";
    where.uri = "urn:many";
    for (int i = 0; i < count; ++i) AddClass("Type" + std::to_string(i));
  }

  BoundClass& AddClass(const std::string& name) {
    BoundNamespace& where = *model.namespaces.back();
    where.classes.push_back(std::make_unique<BoundClass>());
    BoundClass& made = *where.classes.back();
    made.where = &where;
    made.name = "C" + name;
    made.fileStem = made.typeName = made.elementName = name;
    BoundMember member;
    member.form = BoundForm::Value;
    member.name = "Number";
    member.variable = "m_number";
    member.xmlName = "number";
    member.xmlNamespace = where.uri;
    member.simple = type;
    made.members = {member};
    return made;
  }

  Model model;
  BoundSimpleType* type;
};

long CountLines(const std::string& text) { return std::count(text.begin(), text.end(), '\n'); }

std::map<std::string, std::string> SourcesOnly(std::map<std::string, std::string> files) {
  for (auto at = files.begin(); at != files.end();) {
    at = at->first.find(".cpp") == std::string::npos ? files.erase(at) : std::next(at);
  }
  return files;
}

}  // namespace

TEST(Emit, WritesTheOrderSchemaAsItWasDesigned) {
  const OrderModel order;
  const auto files = Emit(order.model, OrderOptions());
  std::vector<std::string> paths;
  for (const auto& [path, text] : files) {
    paths.push_back(path);
    EXPECT_EQ(Golden(path), text) << path;
  }
  EXPECT_EQ((std::vector<std::string>{"orders/Address.h", "orders/Enumerations.h", "orders/Item.h",
                                      "orders/Namespace.h", "orders/Order.h", "orders/Roots.h",
                                      "orders/SimpleTypes.h", "orders/USAddress.h",
                                      "orders/orders.h", "orders/orders_1.cpp"}),
            paths);
}

TEST(Emit, EqualModelsGiveEqualTexts) {
  const OrderModel first;
  const OrderModel second;
  EXPECT_EQ(Emit(first.model, OrderOptions()), Emit(second.model, OrderOptions()));
}

TEST(Emit, SplitsSourcesThatWouldGrowTooLong) {
  const ManyClasses many(400);
  const auto sources = SourcesOnly(Emit(many.model, {}));
  EXPECT_GT(sources.size(), 3u);
  for (const auto& [path, text] : sources) {
    EXPECT_LE(CountLines(text), kPartLines + 100) << path;
    EXPECT_GE(CountLines(text), 100) << path;
  }
}

TEST(Emit, ANewTypeChangesTwoSourcesAtMostAndNoHeaderOfAnother) {
  const ManyClasses before(400);
  ManyClasses after(100);
  after.AddClass("Newcomer");
  for (int i = 100; i < 400; ++i) after.AddClass("Type" + std::to_string(i));
  const auto old = Emit(before.model, {});
  std::vector<std::string> headers;
  int sources = 0;
  for (const auto& [path, text] : Emit(after.model, {})) {
    const auto found = old.find(path);
    if (found != old.end() && found->second == text) continue;
    if (path.find(".cpp") != std::string::npos) {
      ++sources;
    } else {
      headers.push_back(path);
    }
  }
  EXPECT_LE(sources, 2);
  EXPECT_EQ((std::vector<std::string>{"many/Newcomer.h", "many/many.h"}), headers);
}

TEST(Emit, MakesAsManySourcesAsItIsTold) {
  const ManyClasses many(40);
  EmitOptions options;
  options.parts = 3;
  options.partStem = "app";
  const auto sources = SourcesOnly(Emit(many.model, options));
  std::vector<std::string> paths;
  long longest = 0;
  for (const auto& [path, text] : sources) {
    paths.push_back(path);
    longest = std::max(longest, CountLines(text));
  }
  EXPECT_EQ((std::vector<std::string>{"app_1.cpp", "app_2.cpp", "app_3.cpp"}), paths);
  EXPECT_LE(longest, 40 * 17 / 3 + 60);

  const ManyClasses one(1);
  EXPECT_EQ(3u, SourcesOnly(Emit(one.model, options)).size());
}

TEST(Emit, AClassWhoseHeaderWouldBeTheNamespacesOwnGetsAnother) {
  ManyClasses many(0);
  for (const char* name : {"Many", "Roots", "SimpleTypes", "Many2"}) many.AddClass(name);
  const auto files = Emit(many.model, {});
  EXPECT_EQ(1u, files.count("many/ManyClass.h"));
  EXPECT_EQ(1u, files.count("many/RootsClass.h"));
  EXPECT_EQ(1u, files.count("many/SimpleTypesClass.h"));
  EXPECT_EQ(1u, files.count("many/Many2.h"));
  EXPECT_NE(std::string::npos, files.at("many/many.h").find("#include \"many/ManyClass.h\""));
}

TEST(Emit, NamesOfTheLibraryThatTheSchemaDeclaresTooAreQualified) {
  ManyClasses many(1);
  BoundNamespace& where = *many.model.namespaces[0];
  where.enums.push_back(std::make_unique<BoundEnum>());
  where.enums[0]->where = &where;
  where.enums[0]->name = "Once";
  where.enums[0]->whitespace = "WhitespaceRule_Collapse";
  where.enums[0]->enumerators = {{"Once_more", "more", ""}};
  const std::string source = SourcesOnly(Emit(many.model, {})).begin()->second;
  EXPECT_NE(std::string::npos,
            source.find("ValueElement(\"number\", kNamespace, QzXmlLib16::Once, &CType0::m_number, "
                        "kXsdInt),"))
      << source;
}

TEST(Emit, AccessorsThatHideAnOperationOfTheBaseCallItByItsWholeName) {
  ManyClasses many(1);
  BoundMember& member = many.model.namespaces[0]->classes[0]->members[0];
  member.name = "Value";
  member.variable = "m_value";
  const std::string header = Emit(many.model, {}).at("many/Type0.h");
  EXPECT_NE(std::string::npos,
            header.find("  void SetValue(std::int32_t value) { CBoundClass::SetValue("
                        "Property_Value, m_value, value); }\n"))
      << header;
}

TEST(Emit, TargetNamespacesThatShareACppNamespaceHaveFunctionsOfTheirOwn) {
  ManyClasses many(1);
  many.model.namespaces.push_back(std::make_unique<BoundNamespace>());
  for (const auto& where : many.model.namespaces) {
    where->roots.push_back(
        {"a", where->uri, many.model.namespaces[0]->classes[0].get(), false, ""});
  }
  BoundNamespace& second = *many.model.namespaces[1];
  second.cppName = "many";
  second.fileStem = "many2";
  second.uri = "urn:second";
  second.constant = "kNamespace2";
  const auto files = Emit(many.model, {});
  EXPECT_NE(std::string::npos, files.at("many/Roots.h").find(" NewRoot(QzXmlLib16::CXmlElement*"));
  EXPECT_NE(std::string::npos, files.at("many/Roots.h").find("CSmartPtr<CType0> NewA();"));
  EXPECT_NE(std::string::npos,
            files.at("many2/Roots.h").find(" NewRoot2(QzXmlLib16::CXmlElement*"));
  EXPECT_NE(std::string::npos, files.at("many2/Roots.h").find("CSmartPtr<CType0> NewA2();"));
  EXPECT_NE(std::string::npos,
            files.at("many2/many2_1.cpp").find("CObjectHandle NewRoot2(CXmlElement* element) {"));
}
