#include "json_file.h"

#include "command_line.h"
#include "searchpath/model/byte_text.h"
#include "searchpath/platform/filesystem.h"
#include "standard_streams.h"

#include <cerrno>
#include <iterator>
#include <system_error>

namespace Corvane::PathManagement::tool {

std::optional<std::string> ReadBytes(const std::string& file) {
  fl::filesystem::ifstream stream(TextFromBytes(file));
  std::error_code error = stream.openError();
  if (error == std::errc::no_such_file_or_directory) return std::nullopt;
  std::string bytes;
  if (!error) {
    bytes.assign(std::istreambuf_iterator<char>(stream), {});
    if (stream.bad()) error = std::make_error_code(std::errc::io_error);
  }
  if (!error) return bytes;
  throw UsageError("cannot read " + Quoted(file) + ": " + error.message());
}

void ReadJson(const std::string& file, const std::string& bytes, std::size_t most,
              const std::function<void(const json::Field&)>& read) try {
  const json::LocatedJson root = json::ParseJson(bytes, most);
  read({root, /*name=*/{}});  // the root is in no field, so it has no name
} catch (const json::JsonException& error) {
  throw UsageError(GetBytes(json::GetMessage(TextFromBytes(file), error.line, error.field,
                                             json::GetWords(error.fault) + error.detail)));
}

}  // namespace Corvane::PathManagement::tool
