// tables NAME: a search path that is no folder of any disk. Two tables of a database are its entries and
// their rows its files; prints where NAME stands.
#include <iostream>
#include <searchpath/host.h>
#include <searchpath/utilities.h>

using namespace Corvane::PathManagement;

namespace {

class Table : public PathEntryBase {
 public:
  Table(const std::string& name, const std::vector<ustring>& names)
      : location(AnyText("db://main/" + name)) {
    for (const ustring& row : names) {
      rows->push_back(std::make_shared<const PathItem>(location, row, u".zt"));
    }
  }
  AbsoluteIRI GetAbsoluteIRI() const override { return location; }
  std::shared_ptr<const PathItems> GetItems() const override { return rows; }

 private:
  AbsoluteIRI location;
  std::shared_ptr<PathItems> rows = std::make_shared<PathItems>();
};

class Database : public PathBase {
 public:
  std::shared_ptr<const PathEntries> GetMainEntries() const override { return tables; }

 private:
  std::shared_ptr<const PathEntries> tables = std::make_shared<const PathEntries>(
      PathEntries{std::make_shared<Table>("functions", std::vector<ustring>{u"plot", u"area"}),
                  std::make_shared<Table>("classes", std::vector<ustring>{u"shape", u"plot"})});
};

}  // namespace

int main(int count, char** words) {
  if (count != 2) return 2;
  const host::Environment environment(std::make_shared<Database>());
  const auto found = environment.Find({.name = words[1], .extensions = {"zt"}});
  std::cout << (found ? BytesFromText(host::GetLocationText(*found)).value() : "nothing") << '\n';
  return found ? 0 : 1;
}
