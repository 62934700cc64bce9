#include "tests/schemas/RoundTrip.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <sstream>
#include <string>

#include "qzxml/QzXml.h"
#include "qzxml/binding/Member.h"
#include "tests/support/WalkedText.h"

namespace qztest {

using namespace QzXmlLib16;

namespace {

constexpr char kInstance[] = "http://www.w3.org/2001/XMLSchema-instance";

std::string Collapsed(const std::string& text) {
  std::istringstream words(text);
  std::string all;
  for (std::string word; words >> word;) all += all.empty() ? word : " " + word;
  return all;
}

// A text as a value of a type, in the one form that all texts of that value have; "" for none.
std::string AsValue(const std::string& text, ItemType type) {
  if (text.empty()) return "";
  try {
    QzVariant variant;
    variant.FromString(text, type, CWhitespaceUtils::WhitespaceRule_Collapse);
    if (type == ItemType_base64Binary && variant.GetBase64Binary().IsRefusedBase64()) return "";
    return variant.ToString(nullptr);
  } catch (const CQzException&) {
    return "";
  }
}

// Whether two texts are the same value of some type, as the driver does not know which one it is.
bool AreSameValue(const std::string& read, const std::string& written) {
  const std::string was = Collapsed(read);
  const std::string is = Collapsed(written);
  if (was == is) return true;
  for (const ItemType type :
       {ItemType_decimal, ItemType_r8, ItemType_boolean, ItemType_datetime, ItemType_date,
        ItemType_time, ItemType_duration, ItemType_hexBinary, ItemType_base64Binary}) {
    const std::string value = AsValue(was, type);
    if (!value.empty() && value == AsValue(is, type)) return true;
  }
  return false;
}

// What a document says about itself and not about its content.
bool IsLeftOut(const CXmlAttribute& attribute) {
  if (attribute.GetNamespaceURI() != kInstance) return false;
  const std::string& value = attribute.GetValue();
  return attribute.GetLocalName() != "nil" || value == "false" || value == "0";
}

void AppendTree(const CXmlElement& element, const std::string& path,
                std::vector<std::string>& lines) {
  const std::string here = path + "/{" + element.GetNamespaceURI() + "}" + element.GetLocalName();
  lines.push_back(here + " = " + Collapsed(element.GetText()));
  std::vector<std::string> attributes;
  for (const CXmlAttribute* attribute : element.GetAttributes()) {
    if (IsLeftOut(*attribute)) continue;
    attributes.push_back(here + "/@{" + attribute->GetNamespaceURI() + "}" +
                         attribute->GetLocalName() + " = " + Collapsed(attribute->GetValue()));
  }
  std::sort(attributes.begin(), attributes.end());
  lines.insert(lines.end(), attributes.begin(), attributes.end());
  for (const CXmlElement* child = element.GetFirstElement(); child != nullptr;
       child = child->GetNextSiblingElement()) {
    AppendTree(*child, here, lines);
  }
}

std::vector<std::string> TreeLines(const CXmlElement& root) {
  std::vector<std::string> lines;
  AppendTree(root, "", lines);
  return lines;
}

std::vector<std::string> TreeLines(const std::string& text) {
  const CSerializationContext context;
  CXmlDocument document(context);
  document.LoadXml(text.c_str());
  return TreeLines(*document.GetDocumentElement());
}

// The text of an object, with the values that are the schema's defaults.
std::string WholeText(const CXmlObjectBase& object) {
  CSerializationContext context;
  context.SetWriteDefaultElementValues(true);
  return object.ToXml(true, true, EOLType_LF, context);
}

// Whether the walk over the tables writes what is written otherwise.
bool IsWrittenAsWalked(const CXmlObjectBase& object) {
  const CSerializationContext context;
  return ByPlan(object, Form(), context).text == ByWalk(object, Form(), context).text &&
         OctetsByPlan(object, context).text == OctetsByWalk(object, context).text;
}

// Whether text stands beside children somewhere. Fast Infoset and JSON move it into other elements.
bool HasMixedText(const CXmlElement& element) {
  const CXmlElement* child = element.GetFirstElement();
  if (child != nullptr && !Collapsed(element.GetText()).empty()) return true;
  for (; child != nullptr; child = child->GetNextSiblingElement()) {
    if (HasMixedText(*child)) return true;
  }
  return false;
}

// Whether two lines name the same node with the same value.
bool AreSameLine(const std::string& read, const std::string& written) {
  const std::size_t end = read.find(" = ");
  if (end == read.npos || read.compare(0, end + 3, written, 0, end + 3) != 0)
    return read == written;
  return AreSameValue(read.substr(end + 3), written.substr(end + 3));
}

// The first place where two trees differ; empty where they do not.
std::string Difference(const std::vector<std::string>& read,
                       const std::vector<std::string>& written) {
  for (std::size_t i = 0; i < std::max(read.size(), written.size()); ++i) {
    const std::string was = i < read.size() ? read[i] : "(end)";
    const std::string is = i < written.size() ? written[i] : "(end)";
    if (!AreSameLine(was, is)) return was + " became " + is;
  }
  return "";
}

bool AreEqualInAnyOrder(std::vector<std::string> read, std::vector<std::string> written) {
  std::sort(read.begin(), read.end());
  std::sort(written.begin(), written.end());
  return Difference(read, written).empty();
}

void Report(const char* what, const char* verdict, std::string detail) {
  std::replace(detail.begin(), detail.end(), '\n', ' ');
  std::replace(detail.begin(), detail.end(), '\t', ' ');
  std::printf("%s\t%s\t%s\n", what, verdict, detail.c_str());
}

CObjectHandle NewRoot(const std::vector<AbstractClassFactory>& makers, CXmlElement* element) {
  for (const AbstractClassFactory maker : makers) {
    if (const CObjectHandle root = maker(element)) return root;
  }
  return CObjectHandle();
}

// Sends an object through another format and reports what is not the same behind it.
template <typename Send>
void TryFormat(const char* format, CXmlElement& root, CXmlObjectBase& object, Send send,
               const std::vector<AbstractClassFactory>& makers) {
  try {
    const CObjectHandle second = NewRoot(makers, &root);
    send(object, *second);
    const std::string difference =
        Difference(TreeLines(WholeText(object)), TreeLines(WholeText(*second)));
    if (!difference.empty()) Report(format, "differs", difference);
  } catch (const CQzException& e) {
    Report(format, "refused", e.GetFullMessage());
  }
}

void TryFormats(CXmlElement& root, CXmlObjectBase& object,
                const std::vector<AbstractClassFactory>& makers) {
  if (HasMixedText(root)) return Report("formats", "mixed", "");
  const auto fastInfoset = [](CXmlObjectBase& from, CXmlObjectBase& to) {
    to.FromXmlStream(from.ToFastInfosetStream());
  };
  TryFormat("fastinfoset", root, object, fastInfoset, makers);
  const auto json = [](CXmlObjectBase& from, CXmlObjectBase& to) {
    to.FromJson(from.ToJson().c_str());
  };
  TryFormat("json", root, object, json, makers);
}

void TryFile(const char* file, bool withFormats, const std::vector<AbstractClassFactory>& makers) {
  try {
    const CSerializationContext context;
    CXmlDocument document(context);
    document.Load(file);
    CXmlElement* const root = document.GetDocumentElement();
    const CObjectHandle object = NewRoot(makers, root);
    if (object == nullptr) {
      return Report(file, "no root", root->GetNamespaceURI() + " " + root->GetLocalName());
    }
    object->FromXmlElement(root);
    const std::string difference = Difference(TreeLines(*root), TreeLines(WholeText(*object)));
    const char* verdict = difference.empty() ? "same" : "differs";
    if (!difference.empty() &&
        AreEqualInAnyOrder(TreeLines(*root), TreeLines(WholeText(*object)))) {
      verdict = "reordered";
    }
    if (!IsWrittenAsWalked(*object)) return Report(file, "differs", "the plan from the walk");
    Report(file, verdict, difference);
    if (withFormats && *verdict != 'd') TryFormats(*root, *object, makers);
  } catch (const CQzException& e) {
    Report(file, "refused", e.GetFullMessage());
  }
}

}  // namespace

int RunRoundTrip(int argc, char** argv, const std::vector<AbstractClassFactory>& makers) {
  bool withFormats = false;
  for (int i = 1; i < argc; ++i) {
    if (std::strcmp(argv[i], "--formats") == 0) {
      withFormats = true;
    } else {
      TryFile(argv[i], withFormats, makers);
    }
  }
  return 0;
}

}  // namespace qztest
