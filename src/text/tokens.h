#ifndef SEARCHPATH_SRC_TEXT_TOKENS_H
#define SEARCHPATH_SRC_TEXT_TOKENS_H

#include "searchpath/model/ustring.h"

#include <boost/token_functions.hpp>
#include <boost/token_iterator.hpp>

#include <cstddef>
#include <string_view>

namespace Corvane::PathManagement::detail {

/// A token as a view into the text. The tokenizer calls `assign`.
class TokenView {
 public:
  void assign(const char16_t* begin, const char16_t* end) noexcept {
    view = {begin, static_cast<std::size_t>(end - begin)};
  }

  [[nodiscard]] std::u16string_view View() const noexcept { return view; }

 private:
  std::u16string_view view;
};

/// Calls `take` with a view of each token of `text`, in order. Every single unit of `delimiters` is
/// a separator; empty tokens are dropped.
template <class Take>
void ForEachToken(std::u16string_view text, const ustring& delimiters, const Take& take) {
  using Separator = boost::char_separator<char16_t>;
  using Iterator = boost::token_iterator<Separator, const char16_t*, TokenView>;
  const Separator separator(delimiters.c_str());
  const char16_t* const end = text.data() + text.size();
  for (Iterator token(separator, text.data(), end), last(separator, end, end); token != last;
       ++token) {
    take(token->View());
  }
}

}  // namespace Corvane::PathManagement::detail

#endif  // SEARCHPATH_SRC_TEXT_TOKENS_H
