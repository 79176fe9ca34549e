#ifndef SEARCHPATH_SRC_HOST_TRUST_ACCESS_FACTS_H
#define SEARCHPATH_SRC_HOST_TRUST_ACCESS_FACTS_H

#include "platform/descriptor.h"

#include <sys/types.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

namespace Corvane::PathManagement::host {

/// An entry of an access-control list. Those for the owner and for all others are left out: they
/// say what the mode of the file says.
struct AccessEntry {
  enum class Kind : std::uint8_t { OwningGroup, User, Group, Mask };

  Kind kind;
  std::uint32_t id;  // of the User or Group; means nothing for the other kinds
  unsigned rights;   // a sum of R_OK, W_OK and X_OK

  friend bool operator==(const AccessEntry&, const AccessEntry&) = default;
};

using AccessList = std::vector<AccessEntry>;

/// What decides who may do what with a file, a folder or a link.
struct AccessFacts {
  uid_t owner = 0;
  gid_t group = 0;
  mode_t mode = 0;       // permissions and type
  AccessList list = {};  // empty when the mode alone decides
  dev_t device = 0;
  ino_t inode = 0;
  bool isNullDevice = false;  // /dev/null: what is written to it is never read
};

/// The entries of an access-control list, from the attribute in which the kernel hands it out; none
/// when the attribute is damaged.
[[nodiscard]] AccessList ParseAccessList(std::string_view attribute);

/// Reads the facts about `object`, which stands in `folder` as `name` and may be open with O_PATH.
/// When that fails, sets `error`; otherwise leaves it as it is.
[[nodiscard]] AccessFacts ReadAccessFacts(const fl::filesystem::detail::Descriptor& object,
                                          const fl::filesystem::detail::Descriptor& folder,
                                          const std::string& name, std::error_code& error);

}  // namespace Corvane::PathManagement::host

#endif  // SEARCHPATH_SRC_HOST_TRUST_ACCESS_FACTS_H
