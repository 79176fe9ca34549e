#include "found_file.h"

#include "output.h"
#include "path_folder.h"
#include "searchpath/host/environment.h"
#include "searchpath/host/words.h"
#include "searchpath/model/byte_text.h"

#include <nlohmann/json.hpp>

#include <utility>

namespace Corvane::PathManagement::tool {

namespace {

void WriteObject(const Output& output, nlohmann::ordered_json object, const FoundItem& file) {
  const IPathEntry& folder = *file.GetPathEntry();
  AddText(object, "path", host::GetNativePath(file));
  AddText(object, "folder", GetNativePath(folder));
  object["kind"] = host::GetWord(folder.GetPathEntryType());
  output.WriteObject(object);
}

// An object that begins with the name that was asked for.
nlohmann::ordered_json GetObjectFor(const std::string& name) {
  nlohmann::ordered_json object;
  AddText(object, "name", TextFromBytes(name));
  return object;
}

}  // namespace

void WriteFile(const Output& output, const FoundItem& file) {
  if (output.IsJson()) {
    WriteObject(output, {}, file);
  } else {
    output.WritePath(host::GetNativePath(file));
  }
}

void WriteAnswer(const Output& output, const std::string& name, const FoundItem& file) {
  if (!output.IsJson()) {
    WriteFile(output, file);
    return;
  }
  WriteObject(output, GetObjectFor(name), file);
}

void WriteMatch(const Output& output, const std::string& pattern, const ustring& name,
                const FoundItem& file) {
  if (!output.IsJson()) {
    WriteFile(output, file);
    return;
  }
  nlohmann::ordered_json object;
  AddText(object, "pattern", TextFromBytes(pattern));
  AddText(object, "name", name);
  WriteObject(output, std::move(object), file);
}

void WriteMiss(const Output& output, const std::string& name) {
  nlohmann::ordered_json object = GetObjectFor(name);
  object["path"] = nullptr;
  output.WriteObject(object);
}

void WriteEnd(const Output& output, const std::string& name) {
  nlohmann::ordered_json object = GetObjectFor(name);
  object["end"] = true;
  output.WriteObject(object);
}

}  // namespace Corvane::PathManagement::tool
