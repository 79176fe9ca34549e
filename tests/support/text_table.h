#ifndef SEARCHPATH_TESTS_SUPPORT_TEXT_TABLE_H
#define SEARCHPATH_TESTS_SUPPORT_TEXT_TABLE_H

#include "searchpath/model/absolute_iri.h"

#include <gtest/gtest.h>

#include <vector>

namespace Corvane::PathManagement::test {

/// The text that `make` returns; "invalid" when it raises `InvalidIRIException`.
template <class Make>
ustring OrInvalid(const Make& make) try {
  return make();
} catch (const foundation::storage::vfs::InvalidIRIException&) {
  return u"invalid";
}

/// Each row is an input and what `make` is expected to return for it, as "input => text"; a row
/// without an arrow is to be returned as it is.
template <class Make>
void ExpectTable(const std::vector<ustring>& rows, const Make& make) {
  for (const ustring& row : rows) {
    const auto arrow = row.find(u" => ");
    const ustring input = row.substr(0, arrow);
    const ustring expected = arrow == row.npos ? input : row.substr(arrow + 4);
    EXPECT_EQ(OrInvalid([&] { return make(input); }), expected) << testing::PrintToString(row);
  }
}

}  // namespace Corvane::PathManagement::test

#endif  // SEARCHPATH_TESTS_SUPPORT_TEXT_TABLE_H
