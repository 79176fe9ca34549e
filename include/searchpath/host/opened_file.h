#ifndef SEARCHPATH_HOST_OPENED_FILE_H
#define SEARCHPATH_HOST_OPENED_FILE_H

#include "searchpath/export.h"
#include "searchpath/host/lookup_rules.h"
#include "searchpath/host/trust.h"
#include "searchpath/model/found_item.h"

#include <memory>
#include <vector>

namespace Corvane::PathManagement::host {

/// A file that a name means, open for reading.
///
/// It was reached folder by folder, each opened in the one before; links were followed by their texts.
/// Whoever renames or replaces something on the way meanwhile changes neither what is open nor what
/// `ExamineTrust` says about how it was reached. Who may write to the file itself, now or later, can
/// still change its content.
///
/// Links that only the kernel can follow, such as those of /proc, lead nowhere.
/// Ownership: closes the file when it is destroyed. A moved-from object may only be assigned or
/// destroyed.
/// Threads: not synchronised; constant operations, from any thread.
class SEARCHPATH_EXPORT OpenedFile {
 public:
  OpenedFile(OpenedFile&& other) noexcept;
  OpenedFile& operator=(OpenedFile&& other) noexcept;
  ~OpenedFile();

  /// What the name means: the file that is open.
  [[nodiscard]] const FoundItem& GetItem() const noexcept;

  /// The descriptor, which stays this object's own. It stands at the beginning of the file and is
  /// closed when another program is executed.
  [[nodiscard]] int GetDescriptor() const noexcept;
  /// Hands the descriptor over to the caller; -1 from then on.
  [[nodiscard]] int Release() noexcept;

  /// Who could have put another file there, or can change this one, as things were on the way to it.
  /// Folders that were asked before and had no such file are not examined, nor is where relative parts
  /// of the path come from. `TrustLookup::names` does not count.
  ///
  /// Cost: reads the user database; nothing else is asked.
  [[nodiscard]] std::vector<TrustFinding> ExamineTrust(const TrustLookup& lookup = {}) const;

 private:
  friend class Environment;
  struct State;

  /// Opens the file.
  ///
  /// Errors: `std::system_error` when it cannot be opened, or does not count any more.
  OpenedFile(const FoundItem& item, LookupRules::Files files);

  std::unique_ptr<State> state;
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_HOST_OPENED_FILE_H
