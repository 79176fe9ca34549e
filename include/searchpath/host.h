#ifndef SEARCHPATH_HOST_H
#define SEARCHPATH_HOST_H

// IWYU pragma: begin_exports
#include "searchpath/host/diagnostic_log.h"
#include "searchpath/host/disk_feed.h"
#include "searchpath/host/doctor.h"
#include "searchpath/host/environment.h"
#include "searchpath/host/explanation.h"
#include "searchpath/host/filename_comparison.h"
#include "searchpath/host/folder_entry.h"
#include "searchpath/host/folder_observer.h"
#include "searchpath/host/folder_origin.h"
#include "searchpath/host/folder_path.h"
#include "searchpath/host/folder_problem.h"
#include "searchpath/host/folder_tree.h"
#include "searchpath/host/freshness.h"
#include "searchpath/host/listing_file.h"
#include "searchpath/host/lookup_observer.h"
#include "searchpath/host/main_search_path_manager.h"
#include "searchpath/host/name_changes.h"
#include "searchpath/host/package_registry.h"
#include "searchpath/host/path_differences.h"
#include "searchpath/host/path_entry_factory.h"
#include "searchpath/host/path_refresh.h"
#include "searchpath/host/shadows.h"
#include "searchpath/host/similar_file.h"
#include "searchpath/host/stored_path.h"
#include "searchpath/host/working_folder.h"
// IWYU pragma: end_exports

#endif  // SEARCHPATH_HOST_H
