#ifndef SEARCHPATH_MODEL_FILENAME_MATCHING_POLICY_H
#define SEARCHPATH_MODEL_FILENAME_MATCHING_POLICY_H

#include <cstdint>

namespace Corvane::PathManagement {

/// How file names are compared.
enum class FilenameMatchingPolicy : std::uint32_t {
  CaseSensitive = 0,      ///< code unit by code unit
  IgnoreCase = 1,         ///< after full Unicode case folding, without Unicode normalisation
  FileSystemDefault = 2,  ///< as the folder's file system compares; case-sensitive on Linux
};

}  // namespace Corvane::PathManagement

#endif  // SEARCHPATH_MODEL_FILENAME_MATCHING_POLICY_H
