// Takes memory away from writing Fast Infoset, each piece of it once, in a process of its own: the
// documents behind the one that fails are as ever. Ends with the number of those that are not.
#include <cstdio>
#include <cstdlib>
#include <new>
#include <string>

#include "qzxml/fastinfoset/FastInfosetContext.h"
#include "tests/fastinfoset/Written.h"

namespace {

long g_left = -1;  // how many allocations succeed before the one that fails; negative for all

void* Take(std::size_t size) {
  if (g_left >= 0 && g_left-- == 0) throw std::bad_alloc();
  void* const memory = std::malloc(size != 0 ? size : 1);
  if (memory == nullptr) throw std::bad_alloc();
  return memory;
}

}  // namespace

void* operator new(std::size_t size) { return Take(size); }
void* operator new[](std::size_t size) { return Take(size); }
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete[](void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }
void operator delete[](void* memory, std::size_t) noexcept { std::free(memory); }

namespace {

using namespace QzXmlLib16;
using qztest::Written;

// Tables and pieces that grow several times, and a value that is longer than a piece.
std::string WriteMuch(const std::string& longText) {
  CFastInfosetContext options;
  options.SetElementMaxAddLength(1000);
  return Written(options, [&](CFastInfosetWriter& w) {
    w.WriteStartElement("much", "urn:much");
    for (int i = 0; i < 600; ++i) {
      w.WriteStartElement("name" + std::to_string(i), "urn:much");
      w.WriteText("a text of some length that is not like others: " + std::to_string(i),
                  ItemType_string, false);
      w.WriteEndElement();
    }
    w.WriteStartElement("long", "urn:long");
    w.WriteText(longText, ItemType_string, false);
    w.WriteEndElement();
    w.WriteEndElement();
  });
}

// The tables that wait behind it are small.
std::string WriteLittle() {
  return Written([](CFastInfosetWriter& w) {
    w.WriteStartElement("little", "");
    w.WriteText("text", ItemType_string, false);
    w.WriteEndElement();
  });
}

// From a copy of the tables of a vocabulary.
std::string WriteByVocabulary() {
  static CFastInfosetContext* const options = [] {
    auto* const made = new CFastInfosetContext();
    made->SetUseGeneratedVocabulary(true);
    for (int i = 0; i < 40; ++i) {
      const std::string text = "a name of some length " + std::to_string(i);
      made->GetVocabulary()->AddElement("", "urn:much", text);
      made->GetVocabulary()->AddElementValue(text);
    }
    return made;
  }();
  return Written(*options, [](CFastInfosetWriter& w) {
    w.WriteStartElement("little", "");
    w.WriteText("text", ItemType_string, false);
    w.WriteEndElement();
  });
}

// Has each allocation of a document fail, one after the other; answers how often documents behind
// that are other ones.
template <typename Write>
int Try(const char* name, Write write) {
  const std::string little = WriteLittle();
  const std::string whole = write();
  int failures = 0;
  bool hasFailed = true;
  for (long first = 0; hasFailed; ++first) {
    WriteLittle();
    hasFailed = false;
    g_left = first;
    try {
      write();
    } catch (const std::bad_alloc&) {
      hasFailed = true;
    }
    g_left = -1;
    if (WriteLittle() == little && write() == whole) continue;
    std::printf("%s: not as ever behind allocation %ld\n", name, first);
    ++failures;
  }
  return failures;
}

}  // namespace

int main() {
  const std::string longText(300'000, 't');
  return Try("much", [&] { return WriteMuch(longText); }) +
         Try("by a vocabulary", [] { return WriteByVocabulary(); });
}
