#ifndef SEARCHPATH_TESTS_SUPPORT_RECORDING_MANAGER_H
#define SEARCHPATH_TESTS_SUPPORT_RECORDING_MANAGER_H

#include "searchpath/platform/main_search_path_manager.h"
#include "support/recording.h"

// What editing talks to, in the manner of recording.h. Folders are shown by their names.
namespace Corvane::PathManagement::test {

using IRIList = std::vector<AbsoluteIRI>;
using PackageRegistry::PropertyValue;

/// The names of the folders, with spaces between.
template <class Folders>
ustring FolderNames(const Folders& folders) {
  ustring names;
  for (const AbsoluteIRI& each : folders) names += (names.empty() ? u"" : u" ") + each.getName();
  return names;
}

/// Takes over the folders that it is given, once `duringChange` has returned.
struct FakeManager : IMainSearchPathManager, Recorder {
  explicit FakeManager(CallLog* callLog = nullptr) : Recorder{"manager", callLog} {}
  std::shared_ptr<const IRIList> folders = std::make_shared<const IRIList>();
  std::vector<ComponentIdentifier> packages = {{u"a", u"1"}, {u"p", u"1"}, {u"p", u"1"}};
  std::function<void(Notification&)> duringChange = [](Notification&) {};

  void SetFolderIRIs(const AbsoluteIRIRange& given, Notification& notification) override {
    Record(__func__, FolderNames(given));
    duringChange(notification);
    folders = std::make_shared<const IRIList>(given.begin(), given.end());
  }
  std::shared_ptr<const decltype(packages)> GetPackagesOnPath() const override {
    return Record(__func__), std::make_shared<const decltype(packages)>(packages);
  }
  decltype(folders) GetFolderIRIs() const override { return Record(__func__), folders; }
};

/// A registry of one package, called "p", which is itself.
struct FakeRegistry : PackageRegistry::IPackageRegistry, PackageRegistry::IPackage, Recorder {
  explicit FakeRegistry(CallLog* callLog = nullptr) : Recorder{"p", callLog} {}
  PackageRegistry::PackageMetadata metadata{true, false, AbsoluteIRI(u"file:///usr/../root")};
  std::map<ustring, PropertyValue, std::less<>> properties;
  std::vector<PackageRegistry::PackageFolder> folders;

  std::shared_ptr<const IPackage> GetPackage(const ComponentIdentifier& package) const override {
    Record(__func__, package.name);
    return {std::shared_ptr<const void>(), package.name == u"p" ? this : nullptr};
  }
  const decltype(folders)& GetFolders() const override { return Record(__func__), folders; }
  std::optional<PropertyValue> GetProperty(std::u16string_view key) const override {
    Record(__func__, ustring(key));
    const auto property = properties.find(key);
    return property == properties.end() ? std::nullopt : std::optional(property->second);
  }
  const decltype(metadata)& GetMetadata() const override { return Record(__func__), metadata; }
};

}  // namespace Corvane::PathManagement::test

#endif  // SEARCHPATH_TESTS_SUPPORT_RECORDING_MANAGER_H
