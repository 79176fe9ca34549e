#ifndef SEARCHPATH_UTILITIES_H
#define SEARCHPATH_UTILITIES_H

// IWYU pragma: begin_exports
#include "searchpath/model/absolute_iri.h"
#include "searchpath/model/any_range_adapter.h"
#include "searchpath/model/byte_text.h"
#include "searchpath/model/constants.h"
#include "searchpath/model/filename_matching_policy.h"
#include "searchpath/model/found_item.h"
#include "searchpath/model/path.h"
#include "searchpath/model/path_entry.h"
#include "searchpath/model/path_entry_factory.h"
#include "searchpath/model/path_entry_type.h"
#include "searchpath/model/path_item.h"
#include "searchpath/model/search_scope.h"
#include "searchpath/model/search_target.h"
#include "searchpath/model/ustring.h"
#include "searchpath/platform/current_working_folder.h"
#include "searchpath/platform/diagnostic_logger.h"
#include "searchpath/platform/exception.h"
#include "searchpath/platform/filesystem.h"
#include "searchpath/platform/iri_text.h"
#include "searchpath/platform/storage.h"
#include "searchpath/utilities/concatenated_path.h"
#include "searchpath/utilities/deduplicated_path.h"
#include "searchpath/utilities/file_lookup.h"
#include "searchpath/utilities/filtered_path.h"
#include "searchpath/utilities/iri_conversion.h"
#include "searchpath/utilities/matching_entries.h"
#include "searchpath/utilities/once_flag.h"
#include "searchpath/utilities/partial_pathname.h"
#include "searchpath/utilities/path_entry_vector_differentiator.h"
#include "searchpath/utilities/path_strings.h"
#include "searchpath/utilities/toolbox_path_cache.h"
// IWYU pragma: end_exports

#endif  // SEARCHPATH_UTILITIES_H
