#ifndef SEARCHPATH_TESTS_SUPPORT_RECORDING_MANAGER_H
#define SEARCHPATH_TESTS_SUPPORT_RECORDING_MANAGER_H

#include "searchpath/platform/main_search_path_manager.h"
#include "support/recording.h"

// What editing talks to, in the manner of recording.h. Folders are shown by their names.
namespace Corvane::PathManagement::test {

using IRIList = std::vector<AbsoluteIRI>;

/// The names of the folders, with spaces between.
template <class Folders>
ustring Names(const Folders& folders) {
  ustring names;
  for (const AbsoluteIRI& folder : folders)
    names += (names.empty() ? u"" : u" ") + folder.getName();
  return names;
}

/// Takes over the folders that it is given, once `duringChange` has returned.
struct FakeManager : IMainSearchPathManager, Recorder {
  explicit FakeManager(CallLog* callLog = nullptr) : Recorder{"manager", callLog} {}

  std::shared_ptr<const IRIList> folders = std::make_shared<const IRIList>();
  std::vector<ComponentIdentifier> packages;
  std::function<void(Notification&)> duringChange = [](Notification&) {};

  void SetFolderIRIs(const AbsoluteIRIRange& given, Notification& notification) override {
    Record(__func__, Names(given));
    duringChange(notification);
    folders = std::make_shared<const IRIList>(given.begin(), given.end());
  }
  std::shared_ptr<const std::vector<ComponentIdentifier>> GetPackagesOnPath() const override {
    return Record(__func__), std::make_shared<std::vector<ComponentIdentifier>>(packages);
  }
  std::shared_ptr<const IRIList> GetFolderIRIs() const override {
    return Record(__func__), folders;
  }
};

struct FakePackage : Corvane::PackageRegistry::IPackage, Recorder {
  FakePackage(std::string printedName, PackageRegistry::PackageMetadata data, CallLog* callLog)
      : Recorder{std::move(printedName), callLog}, metadata(std::move(data)) {}

  PackageRegistry::PackageMetadata metadata;
  std::map<ustring, PackageRegistry::PropertyValue, std::less<>> properties;
  std::vector<PackageRegistry::PackageFolder> folders;

  const std::vector<PackageRegistry::PackageFolder>& GetFolders() const override {
    return Record(__func__), folders;
  }
  std::optional<PackageRegistry::PropertyValue> GetProperty(
      std::u16string_view key) const override {
    Record(__func__, ustring(key));
    const auto property = properties.find(key);
    if (property == properties.end()) return std::nullopt;
    return property->second;
  }
  const PackageRegistry::PackageMetadata& GetMetadata() const override {
    return Record(__func__), metadata;
  }
};

/// Knows the packages whose names are keys of `packages`.
struct FakeRegistry : PackageRegistry::IPackageRegistry, Recorder {
  explicit FakeRegistry(CallLog* callLog = nullptr) : Recorder{"registry", callLog} {}

  std::map<ustring, std::shared_ptr<FakePackage>> packages;

  std::shared_ptr<const PackageRegistry::IPackage> GetPackage(
      const ComponentIdentifier& identifier) const override {
    Record(__func__, identifier.name);
    const auto known = packages.find(identifier.name);
    return known == packages.end() ? nullptr : known->second;
  }
};

}  // namespace Corvane::PathManagement::test

#endif  // SEARCHPATH_TESTS_SUPPORT_RECORDING_MANAGER_H
