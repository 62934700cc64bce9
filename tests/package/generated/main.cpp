#include <cstdio>

#include "shop_books/shop_books.h"  // a library hands its include folder on

std::string WriteBook();

int main() {
  const CSmartPtr<shop::books::CBook> book = shop::books::NewBook();
  book->FromXml(WriteBook().c_str());
  std::puts(book->GetAuthor()->GetName().c_str());
  return book->GetTitle() == "Emma" ? 0 : 1;
}
