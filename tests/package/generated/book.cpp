#include "shop_books/shop_books.h"

std::string WriteBook() {
  const CSmartPtr<shop::books::CBook> book = shop::books::NewBook();
  book->SetTitle("Emma");
  book->GetAuthor()->SetName("Jane Austen");
  return book->ToXml();
}
