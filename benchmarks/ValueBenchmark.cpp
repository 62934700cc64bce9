// Values into their lexical forms and back, by QzVariant, each beside the nearest call of the
// standard library that does the same: from_chars and to_chars for numbers, strptime and strftime
// for dates, a loop through a table, byte by byte, for base64.
//
// Both sides work through the same texts, made from a fixed seed, and write into a string.
#include <benchmark/benchmark.h>

#include <array>
#include <charconv>
#include <cstdint>
#include <cstdio>
#include <ctime>
#include <random>
#include <string>
#include <vector>

#include "qzxml/QzXml.h"

namespace {

using QzXmlLib16::CWhitespaceUtils;
using QzXmlLib16::ItemType;
using QzXmlLib16::QzVariant;

constexpr std::size_t kTexts = 256;
constexpr std::size_t kLargeTexts = 8;  // so few that the cache holds them
using Texts = std::vector<std::string>;

template <typename Make>
Texts MakeTexts(Make make, std::size_t count = kTexts) {
  std::mt19937_64 random(16);
  Texts texts;
  for (std::size_t i = 0; i < count; ++i) texts.push_back(make(random));
  return texts;
}

int Below(std::mt19937_64& random, std::uint64_t limit) {
  return static_cast<int>(random() % limit);
}

const Texts& I4Texts() {
  static const Texts texts = MakeTexts(
      [](std::mt19937_64& random) { return std::to_string(static_cast<std::int32_t>(random())); });
  return texts;
}

// Sixteen digits, which both sides write.
const Texts& R8Texts() {
  static const Texts texts = MakeTexts([](std::mt19937_64& random) {
    char text[40];
    const double value = static_cast<double>(random() % 10000000000000000) / 1e9;
    return std::string(
        text, std::to_chars(text, text + sizeof text, value, std::chars_format::general, 16).ptr);
  });
  return texts;
}

// Up to 18 digits, four of them behind the point.
const Texts& DecimalTexts() {
  static const Texts texts = MakeTexts([](std::mt19937_64& random) {
    const std::uint64_t whole = random() >> (18 + random() % 40);
    return std::to_string(whole) + "." + std::to_string(1 + random() % 9) +
           std::to_string(100 + random() % 900);
  });
  return texts;
}

const Texts& DateTimeTexts() {
  static const Texts texts = MakeTexts([](std::mt19937_64& random) {
    char text[80];
    std::snprintf(text, sizeof text, "%04d-%02d-%02dT%02d:%02d:%02d", 1970 + Below(random, 60),
                  1 + Below(random, 12), 1 + Below(random, 28), Below(random, 24),
                  Below(random, 60), Below(random, 60));
    return std::string(text);
  });
  return texts;
}

const Texts& BooleanTexts() {
  static const Texts texts = MakeTexts(
      [](std::mt19937_64& random) { return std::string(random() % 2 == 0 ? "true" : "false"); });
  return texts;
}

constexpr char kAlphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

// 1 KB each.
const Texts& Base64Texts() {
  static const Texts texts = MakeTexts(
      [](std::mt19937_64& random) {
        std::string bytes(1024, '\0');
        for (char& c : bytes) c = static_cast<char>(random());
        QzVariant value;
        value.SetBase64Binary(
            QzXmlLib16::CBinaryData(reinterpret_cast<const unsigned char*>(bytes.data()), 1024));
        return value.ToString(nullptr);
      },
      kLargeTexts);
  return texts;
}

// --- The library. ---

void Read(benchmark::State& state, ItemType type, const Texts& texts) {
  QzVariant value;
  std::size_t i = 0;
  for (auto _ : state) {
    value.FromString(texts[i++ % texts.size()], type, CWhitespaceUtils::WhitespaceRule_None);
    benchmark::DoNotOptimize(&value);
  }
}

void Write(benchmark::State& state, ItemType type, const Texts& texts) {
  std::vector<QzVariant> values(texts.size());
  for (std::size_t i = 0; i < texts.size(); ++i) {
    values[i].FromString(texts[i], type, CWhitespaceUtils::WhitespaceRule_None);
  }
  std::size_t i = 0;
  for (auto _ : state) {
    const std::string text = values[i++ % values.size()].ToString(nullptr);
    benchmark::DoNotOptimize(text.data());
  }
}

// --- What it is measured against. ---

// Reads with parse(text), which answers the value.
template <typename Parse>
void ReadPlainly(benchmark::State& state, const Texts& texts, Parse parse) {
  std::size_t i = 0;
  for (auto _ : state) {
    auto value = parse(texts[i++ % texts.size()]);
    benchmark::DoNotOptimize(value);
  }
}

// Writes with print(value, buffer), which answers the end.
template <typename Parse, typename Print>
void WritePlainly(benchmark::State& state, const Texts& texts, Parse parse, Print print) {
  std::vector<decltype(parse(texts[0]))> values;
  for (const std::string& text : texts) values.push_back(parse(text));
  std::size_t i = 0;
  for (auto _ : state) {
    char buffer[40];
    const std::string text(buffer,
                           print(values[i++ % values.size()], buffer, buffer + sizeof buffer));
    benchmark::DoNotOptimize(text.data());
  }
}

template <typename Number>
Number FromChars(const std::string& text) {
  Number value{};
  std::from_chars(text.data(), text.data() + text.size(), value);
  return value;
}

std::tm Strptime(const std::string& text) {
  std::tm time{};
  strptime(text.c_str(), "%Y-%m-%dT%H:%M:%S", &time);
  return time;
}

std::vector<unsigned char> DecodeByBytes(const std::string& text) {
  static const std::array<signed char, 256> table = [] {
    std::array<signed char, 256> made{};
    made.fill(-1);
    for (int i = 0; i < 64; ++i) {
      made[static_cast<unsigned char>(kAlphabet[i])] = static_cast<signed char>(i);
    }
    return made;
  }();
  std::vector<unsigned char> bytes(text.size() / 4 * 3 + 3);
  unsigned char* out = bytes.data();
  std::uint32_t bits = 0;
  int held = 0;
  for (const char c : text) {
    const int value = table[static_cast<unsigned char>(c)];
    if (value < 0) continue;
    bits = bits << 6 | static_cast<std::uint32_t>(value);
    held += 6;
    if (held < 8) continue;
    held -= 8;
    *out++ = static_cast<unsigned char>(bits >> held);
  }
  bytes.resize(static_cast<std::size_t>(out - bytes.data()));
  return bytes;
}

std::string EncodeByBytes(const std::vector<unsigned char>& bytes) {
  std::string text((bytes.size() + 2) / 3 * 4, '=');
  char* out = text.data();
  std::uint32_t bits = 0;
  int held = 0;
  for (const unsigned char byte : bytes) {
    bits = bits << 8 | byte;
    for (held += 8; held >= 6; held -= 6) *out++ = kAlphabet[bits >> (held - 6) & 0x3F];
  }
  if (held > 0) *out = kAlphabet[bits << (6 - held) & 0x3F];
  return text;
}

// --- The pairs: <kind>/<direction>/<who>. ---

constexpr ItemType kI4 = QzXmlLib16::ItemType_i4;
constexpr ItemType kR8 = QzXmlLib16::ItemType_r8;
constexpr ItemType kDecimal = QzXmlLib16::ItemType_decimal;
constexpr ItemType kDateTime = QzXmlLib16::ItemType_datetime;
constexpr ItemType kBoolean = QzXmlLib16::ItemType_boolean;
constexpr ItemType kBase64 = QzXmlLib16::ItemType_base64Binary;

template <typename Run>
void Register(const char* name, Run run) {
  benchmark::RegisterBenchmark(name, run);
}

void RegisterNumbers() {
  Register("i4/read/QzVariant", [](benchmark::State& s) { Read(s, kI4, I4Texts()); });
  Register("i4/read/plain",
           [](benchmark::State& s) { ReadPlainly(s, I4Texts(), &FromChars<std::int32_t>); });
  Register("i4/write/QzVariant", [](benchmark::State& s) { Write(s, kI4, I4Texts()); });
  Register("i4/write/plain", [](benchmark::State& s) {
    WritePlainly(s, I4Texts(), &FromChars<std::int32_t>,
                 [](std::int32_t v, char* at, char* end) { return std::to_chars(at, end, v).ptr; });
  });
  Register("r8/read/QzVariant", [](benchmark::State& s) { Read(s, kR8, R8Texts()); });
  Register("r8/read/plain",
           [](benchmark::State& s) { ReadPlainly(s, R8Texts(), &FromChars<double>); });
  Register("r8/write/QzVariant", [](benchmark::State& s) { Write(s, kR8, R8Texts()); });
  Register("r8/write/plain", [](benchmark::State& s) {
    WritePlainly(s, R8Texts(), &FromChars<double>, [](double v, char* at, char* end) {
      return std::to_chars(at, end, v, std::chars_format::general, 16).ptr;
    });
  });
  Register("decimal/read/QzVariant",
           [](benchmark::State& s) { Read(s, kDecimal, DecimalTexts()); });
  Register("decimal/read/plain",
           [](benchmark::State& s) { ReadPlainly(s, DecimalTexts(), &FromChars<double>); });
  Register("decimal/write/QzVariant",
           [](benchmark::State& s) { Write(s, kDecimal, DecimalTexts()); });
  Register("decimal/write/plain", [](benchmark::State& s) {
    WritePlainly(s, DecimalTexts(), &FromChars<double>,
                 [](double v, char* at, char* end) { return std::to_chars(at, end, v).ptr; });
  });
}

void RegisterOthers() {
  Register("dateTime/read/QzVariant",
           [](benchmark::State& s) { Read(s, kDateTime, DateTimeTexts()); });
  Register("dateTime/read/plain",
           [](benchmark::State& s) { ReadPlainly(s, DateTimeTexts(), &Strptime); });
  Register("dateTime/write/QzVariant",
           [](benchmark::State& s) { Write(s, kDateTime, DateTimeTexts()); });
  Register("dateTime/write/plain", [](benchmark::State& s) {
    WritePlainly(s, DateTimeTexts(), &Strptime, [](const std::tm& v, char* at, char* end) {
      return at + std::strftime(at, static_cast<std::size_t>(end - at), "%Y-%m-%dT%H:%M:%S", &v);
    });
  });
  const auto isTrue = [](const std::string& text) { return text == "true" || text == "1"; };
  Register("boolean/read/QzVariant",
           [](benchmark::State& s) { Read(s, kBoolean, BooleanTexts()); });
  Register("boolean/read/plain",
           [isTrue](benchmark::State& s) { ReadPlainly(s, BooleanTexts(), isTrue); });
  Register("boolean/write/QzVariant",
           [](benchmark::State& s) { Write(s, kBoolean, BooleanTexts()); });
  Register("boolean/write/plain", [isTrue](benchmark::State& s) {
    WritePlainly(s, BooleanTexts(), isTrue, [](bool v, char* at, char*) {
      return at + std::string(v ? "true" : "false").copy(at, 5);
    });
  });
  Register("base64 of 1 KB/read/QzVariant",
           [](benchmark::State& s) { Read(s, kBase64, Base64Texts()); });
  Register("base64 of 1 KB/read/plain",
           [](benchmark::State& s) { ReadPlainly(s, Base64Texts(), &DecodeByBytes); });
  Register("base64 of 1 KB/write/QzVariant",
           [](benchmark::State& s) { Write(s, kBase64, Base64Texts()); });
  Register("base64 of 1 KB/write/plain", [](benchmark::State& s) {
    const std::vector<unsigned char> bytes = DecodeByBytes(Base64Texts().front());
    for (auto _ : s) {
      const std::string text = EncodeByBytes(bytes);
      benchmark::DoNotOptimize(text.data());
    }
  });
}

}  // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  RegisterNumbers();
  RegisterOthers();
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
