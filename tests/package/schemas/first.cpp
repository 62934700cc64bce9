#include "forms/forms.h"
#include "prices/prices.h"

int main() {
  forms::CForm form;
  form.GetItems().Add()->SetCount(3);
  prices::CPrice price;
  price.SetValue(2.5);
  return form.GetItems().size() == 1 && price.GetValue().has_value() ? 0 : 1;
}
