#include "host/packages/package_manifest.h"

#include "json/json_field.h"
#include "model/path_components.h"
#include "searchpath/model/byte_text.h"
#include "searchpath/platform/iri_text.h"
#include "searchpath/utilities/iri_conversion.h"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <type_traits>
#include <utility>
#include <variant>
#include <vector>

namespace Corvane::PathManagement::host {

namespace {

using Corvane::PackageRegistry::IPackage;
using Corvane::PackageRegistry::PackageFolder;
using Corvane::PackageRegistry::PackageMetadata;
using Corvane::PackageRegistry::PropertyValue;
using Properties = std::map<ustring, PropertyValue, std::less<>>;
using Tags = std::shared_ptr<const std::set<int>>;
using json::Field;
using json::JsonFault;
using json::JsonMember;
using json::LocatedJson;

class Package final : public IPackage {
 public:
  Package(PackageMetadata itsMetadata, std::vector<PackageFolder> itsFolders,
          Properties itsProperties)
      : metadata(std::move(itsMetadata)),
        folders(std::move(itsFolders)),
        properties(std::move(itsProperties)) {}

  [[nodiscard]] const std::vector<PackageFolder>& GetFolders() const override { return folders; }
  [[nodiscard]] std::optional<PropertyValue> GetProperty(std::u16string_view key) const override {
    const auto found = properties.find(key);
    if (found == properties.end()) return std::nullopt;
    return found->second;
  }
  [[nodiscard]] const PackageMetadata& GetMetadata() const override { return metadata; }

 private:
  PackageMetadata metadata;
  std::vector<PackageFolder> folders;
  Properties properties;
};

/// Refuses a manifest for a fault that is not one of JSON texts.
[[noreturn]] void Refuse(const Field& field, PackageFault fault, ustring detail = {}) {
  throw ManifestException(fault, field.value.line, field.name, std::move(detail));
}

/// The location that `field` names: an IRI, or a pathname below `packageFolder`.
AbsoluteIRI LocationIn(const Field& field, const ustring& packageFolder) try {
  namespace vfs = foundation::storage::vfs;
  const ustring& text = field.AsText();
  if (vfs::hasIRIPrefix(text)) return GetIRIFromString(text);
  // ".." is refused even where it seems to lead back: behind a link it leads elsewhere.
  if (text.starts_with(u'/') || text.starts_with(u'~') ||
      vfs::detail::HasDoubleDots(std::u16string_view(text))) {
    Refuse(field, PackageFault::OutsideOfFolder);
  }
  return vfs::toAbsoluteIRI(u"file", packageFolder + u'/' + text);
} catch (const foundation::storage::vfs::InvalidIRIException& error) {
  Refuse(field, PackageFault::InvalidFolder, TextFromBytes(error.what()));
}

Tags TagsOf(const Field& field) {
  std::set<int> tags;
  for (const Field& tag : field.GetElements()) tags.insert(tag.AsInt());
  return std::make_shared<const std::set<int>>(std::move(tags));
}

std::vector<PackageFolder> FoldersOf(const Field& field, const ustring& packageFolder) {
  const auto onPath = std::make_shared<const std::set<int>>(std::set<int>{0});
  std::vector<PackageFolder> folders;
  for (const Field& folder : field.GetElements()) {
    if (std::holds_alternative<ustring>(folder.value.content)) {
      folders.push_back({LocationIn(folder, packageFolder), onPath});
      continue;
    }
    // Refuses what is neither; `CheckMembers` would ask for an object alone.
    static_cast<void>(folder.As<LocatedJson::Object>(u"a text or an object"));
    folder.CheckMembers({u"folder", u"tags"});
    const auto tags = folder.Find(u"tags");
    folders.push_back(
        {LocationIn(folder.Get(u"folder"), packageFolder), tags ? TagsOf(*tags) : onPath});
  }
  return folders;
}

PropertyValue PropertyOf(const Field& field) {
  return std::visit(
      [&field]<class Content>(const Content& content) -> PropertyValue {
        // JSON's null is a null pointer here, from which a text could be constructed.
        constexpr bool isNull = std::is_null_pointer_v<Content>;
        if constexpr (!isNull && std::is_constructible_v<PropertyValue, Content>) return content;
        field.Refuse(JsonFault::WrongType, u"a truth value, number or text");
      },
      field.value.content);
}

Properties PropertiesOf(const Field& field) {
  Properties properties;
  const auto& members = field.As<LocatedJson::Object>(u"an object");
  for (const JsonMember& member : members) {
    const Field property{member.value, json::FieldBelow(field.name, member.name)};
    // `GetPathFoldersForPackages` reads these two, and expects truth values.
    if (member.name == u"IsQRX" || member.name == u"ManualInstall") {
      static_cast<void>(property.AsTruth());
    }
    properties.emplace(member.name, PropertyOf(property));
  }
  return properties;
}

}  // namespace

PackageManifest ReadManifest(std::string_view bytes, const AbsoluteIRI& folder) try {
  if (bytes.size() >= kTooLargeManifest) throw ManifestException(PackageFault::TooLarge);
  const LocatedJson root = json::ParseJson(bytes);
  const Field all{root, {}};
  all.CheckMembers({u"name", u"version", u"folders", u"contributesToPath", u"checksManualInstall",
                    u"properties"});
  const Field name = all.Get(u"name");
  const auto contributes = all.Find(u"contributesToPath");
  const auto checksInstall = all.Find(u"checksManualInstall");
  const auto properties = all.Find(u"properties");
  ZentraComponents::ComponentIdentifier identifier{name.AsText(), all.Get(u"version").AsText()};
  auto folders = FoldersOf(all.Get(u"folders"), folder.getPath());
  // A guess: each folder takes its whole location and some more, the rest four times its text.
  constexpr std::size_t kFolderMemory = 200;
  const std::size_t memory =
      4 * bytes.size() +
      folders.size() * (kFolderMemory + sizeof(char16_t) * folder.toStringView().size());
  PackageMetadata metadata{!contributes || contributes->AsTruth(),
                           checksInstall && checksInstall->AsTruth(), folder};
  auto package =
      std::make_shared<const Package>(std::move(metadata), std::move(folders),
                                      properties ? PropertiesOf(*properties) : Properties());
  return {std::move(identifier), name.value.line, std::move(package), memory};
} catch (const json::JsonException& error) {
  throw ManifestException(
      static_cast<PackageFault>(kFirstJsonFault + static_cast<int>(error.fault)), error.line,
      error.field, error.detail);
}

}  // namespace Corvane::PathManagement::host
