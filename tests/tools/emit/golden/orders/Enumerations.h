// Made by qzxml generate from order.xsd.
#pragma once

namespace orders {

// Of each enumeration, the text of an enumerator and the enumerator of a text. Both throw
// CQzInvalidValueException "The value [%s] is not one of %s" for what is none of them.

enum Currency : int {
  Currency_EUR,
  Currency_USD,
  Currency_none_of_these,
};
const char* CurrencyToString(int value);
Currency StringToCurrency(const char* text);

}  // namespace orders
