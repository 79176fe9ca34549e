#ifndef SEARCHPATH_PLATFORM_COMPONENT_IDENTIFIER_H
#define SEARCHPATH_PLATFORM_COMPONENT_IDENTIFIER_H

#include "searchpath/model/ustring.h"

namespace Corvane::ZentraComponents {

/// Names one version of a package.
struct ComponentIdentifier {
  foundation::ustring name;     ///< as the package registry spells it
  foundation::ustring version;  ///< in any form: versions are only compared for equality

  friend bool operator==(const ComponentIdentifier&, const ComponentIdentifier&) = default;
};

}  // namespace Corvane::ZentraComponents

#endif  // SEARCHPATH_PLATFORM_COMPONENT_IDENTIFIER_H
