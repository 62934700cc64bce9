#pragma once

#include <set>
#include <string>
#include <string_view>
#include <vector>

// How names of a schema become names of C++. Pure functions.
//
// Letters and digits of a name stay; everything between them ends a word. Latin letters with marks
// lose them (é is e, ä is ae, ß is ss); letters of the large scripts that C++17 takes in a name
// (Greek, Cyrillic, Hebrew, Arabic, Thai, Kana, Hangul, Han and a few more) stay as they are; any
// other character is written as its number, U2C00.
namespace qzxml::generator {

// Words with their first letters capital: "purchase-order" and "purchaseOrder" are "PurchaseOrder",
// "URL" is "URL". Two digits that become neighbours get a line between them: "v1.0" is "V1_0".
// Never empty; a name without letter or digit is "X".
std::string ToUpperCamel(std::string_view name);

// An upper camel name as that of a variable: "ShipTo" is "shipTo", "URLPath" is "urlPath".
std::string ToLowerCamel(std::string_view upperCamel);

// The English plural of an upper camel name: "Items", "Addresses", "Entries", "Children". What
// looks like a plural stays as it is ("Links"), as do "Data" and "Info"; a name that ends with a
// digit gets "List".
std::string ToPlural(const std::string& upperCamel);

// The part of an enumerator behind its enumeration's name. Case stays, what is no letter or digit
// is one line: "read only" is "read_only", "1.0" is "1_0". A sign before a digit is spelt
// ("Minus1"), as is a text of nothing but signs ("PlusMinus"); the empty text is "Empty". Cut to 64
// octets.
std::string ToEnumeratorPart(std::string_view text);
// The same with every sign spelt, to tell texts apart that differ only in them.
std::string ToSpeltEnumeratorPart(std::string_view text);

// One component of a C++ namespace: lower case, words with a line between: "camt_053_001_02". Never
// empty, never a keyword or a name that others own (std).
std::string ToNamespaceName(std::string_view name);

// Plain ASCII, for a file.
std::string ToFileStem(std::string_view identifier);

// Whether the text is an identifier that a program may use: no keyword, nothing reserved.
bool IsIdentifier(std::string_view text);

// Whether a C++ namespace of that name cannot be: it is the standard's or the library's, a macro,
// or something else that the headers of C and POSIX declare.
bool IsOwnedNamespace(std::string_view text);

// Names that are taken in one scope.
class CNameScope {
 public:
  enum Case { Case_Sensitive, Case_Insensitive };
  explicit CNameScope(Case letters = Case_Sensitive) : m_letters(letters) {}

  bool IsFree(const std::string& name) const;
  // False if it is taken already.
  bool Take(const std::string& name);
  // Takes the first candidate that is free, or the last one with the first number from 2 on that
  // makes it so.
  std::string TakeFirst(const std::vector<std::string>& candidates);

 private:
  std::string Fold(const std::string& name) const;

  Case m_letters;
  std::set<std::string> m_names;
};

// The name with a number behind it: "Name2", and "V1_2" where it ends with a digit.
std::string WithNumber(const std::string& name, int number);

}  // namespace qzxml::generator
