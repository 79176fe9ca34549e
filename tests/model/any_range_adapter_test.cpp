#include "searchpath/model/any_range_adapter.h"

#include <gtest/gtest.h>

#include <list>
#include <set>
#include <span>
#include <string_view>
#include <vector>

namespace Corvane::PathManagement {
namespace {

template <class Container, class Range = UstringRange>
constexpr bool kConverts = std::is_convertible_v<Container, Range>;

static_assert(kConverts<std::vector<ustring>> && kConverts<const std::set<ustring>&> &&
              kConverts<std::span<const ustring>&> && kConverts<ustring (&)[2]> &&
              kConverts<UstringRange&> && kConverts<BidirectionalUstringRange>);
static_assert(kConverts<std::vector<CanonicalAbsoluteIRI>, AbsoluteIRIRange>);
// Here each element would become a text that is gone when it is read; refused_range.cpp shows the
// compiler's message.
static_assert(!kConverts<std::vector<const char16_t*>> &&
              !kConverts<std::vector<std::u16string_view>&> &&
              !kConverts<const std::vector<const char16_t*>, BidirectionalUstringRange> &&
              !kConverts<std::vector<AbsoluteIRI>> && !kConverts<ustring> && !kConverts<int> &&
              !kConverts<std::vector<ustring>, AbsoluteIRIRange>);

template <class Range, class Container>
void ExpectRefersTo(Container&& container) {
  const Range range(container);
  auto element = range.begin();
  for (auto& expected : container) EXPECT_EQ(&*element++, &expected);
  EXPECT_EQ(element, range.end());
}

TEST(AnyRangeAdapterTest, RefersToTheElementsOfTheContainer) {
  std::vector<ustring> texts = {u"a", u"b"};
  ExpectRefersTo<UstringRange>(texts);
  ExpectRefersTo<UstringRange>(std::list<ustring>{u"a", u"b"});
  ExpectRefersTo<UstringRange>(BidirectionalUstringRange(std::as_const(texts)));
  ExpectRefersTo<AbsoluteIRIRange>(
      std::vector{CanonicalAbsoluteIRI(AbsoluteIRI(u"file:///a"), u"b")});
}

}  // namespace
}  // namespace Corvane::PathManagement
