#include "forms/forms.h"

int main() {
  forms::CForm form;
  form.GetItems().Add()->SetCount(3);
  return form.GetItems()[0]->GetCount() == 3 ? 0 : 1;
}
