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
/// It was reached folder by folder, each opened in the one before; links were followed by their
/// texts. To rename or replace something on the way afterwards changes neither what is open nor
/// what `ExamineTrust` says about the way. Anybody who may write to the file itself can still
/// change its contents. Links that only the kernel can follow, such as those of /proc, cannot be
/// opened.
///
/// Threads: not synchronised; constant operations, from any thread.
/// Ownership: closes the file when it is destroyed. A moved-from object may only be assigned or
/// destroyed.
class SEARCHPATH_EXPORT OpenedFile {
 public:
  OpenedFile(OpenedFile&& other) noexcept;
  OpenedFile& operator=(OpenedFile&& other) noexcept;
  ~OpenedFile();

  /// The file that the name means, which is open.
  [[nodiscard]] const FoundItem& GetItem() const noexcept;

  /// The descriptor, which this object goes on owning. It is at the beginning of the file, and is
  /// closed when another program is executed.
  [[nodiscard]] int GetDescriptor() const noexcept;
  /// Hands the descriptor over to the caller; from then on both functions return -1.
  [[nodiscard]] int Release() noexcept;

  /// Who could have put another file there, or can change this one, as the way was when the file
  /// was opened. Folders that were searched before and had no such file are not examined, nor is
  /// the working folder on which the path may depend. `TrustLookup::names` is ignored.
  ///
  /// Cost: reads the user database and nothing else.
  [[nodiscard]] std::vector<TrustFinding> ExamineTrust(const TrustLookup& lookup = {}) const;

 private:
  friend class Environment;
  struct State;

  /// Opens the file of `item`.
  ///
  /// Errors: `std::system_error` when the file cannot be opened, or is none that a name can mean
  /// under `files`.
  OpenedFile(const FoundItem& item, LookupRules::Files files);

  std::unique_ptr<State> state;
};

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_HOST_OPENED_FILE_H
