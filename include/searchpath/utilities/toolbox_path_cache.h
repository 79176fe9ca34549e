#ifndef SEARCHPATH_UTILITIES_TOOLBOX_PATH_CACHE_H
#define SEARCHPATH_UTILITIES_TOOLBOX_PATH_CACHE_H

#include "searchpath/export.h"
#include "searchpath/model/path_entry_factory.h"
#include "searchpath/platform/exception.h"
#include "searchpath/platform/filesystem.h"

#include <boost/exception/exception.hpp>

#include <exception>

namespace Corvane::PathManagement {

/// Raised when a cache, a file in which path entries are saved, cannot be opened or read back. The
/// caller then scans the folders and writes a new cache.
class SEARCHPATH_EXPORT ToolboxCacheWrongFormatException : public std::exception {
 public:
  ToolboxCacheWrongFormatException() = default;
  ToolboxCacheWrongFormatException(const ToolboxCacheWrongFormatException&) = default;
  ToolboxCacheWrongFormatException& operator=(const ToolboxCacheWrongFormatException&) = default;
  ~ToolboxCacheWrongFormatException() override;
};

/// Raised when a cache cannot be written or put in place. `boost::current_exception` and
/// `boost::rethrow_exception` keep the type of this exception, by its base `clone_base`.
class SEARCHPATH_EXPORT UnableToSaveToolboxCacheException
    : public foundation::core::except::Exception<foundation::core::except::IInternalException,
                                                 std::exception>,
      // Virtual, as in Boost's own wrappers, so that a wrapped exception has this base only once.
      public virtual boost::exception_detail::clone_base {
 public:
  UnableToSaveToolboxCacheException() = default;
  UnableToSaveToolboxCacheException(const UnableToSaveToolboxCacheException&) = default;
  UnableToSaveToolboxCacheException& operator=(const UnableToSaveToolboxCacheException&) = default;
  ~UnableToSaveToolboxCacheException() override;

 private:
  [[nodiscard]] const boost::exception_detail::clone_base* clone() const override;
  void rethrow() const override;
};

/// Replaces `cacheFile` by what `factory` writes for the IRI of `root`. At every moment, even after
/// a kill or a power cut, a reader finds either all of the old cache or all of the new one.
///
/// The new file takes over the permissions of the regular file that it replaces. A link is
/// replaced, not followed. A folder, FIFO or device is refused. During the write there is a file
/// "tmpcache_*.xml" beside the cache; such a file that a killed process has left may be removed.
///
/// Threads: several writers of one cache at once need no lock; the last one wins.
/// Errors: `UnableToSaveToolboxCacheException` for every failure, even one of the factory, or when
/// `root` is not an absolute path; the old cache is then unchanged.
/// Cost: that of the factory; also waits for the disk.
SEARCHPATH_EXPORT void WriteToolboxPathCache(const fl::filesystem::path& cacheFile,
                                             const fl::filesystem::path& root,
                                             const IPathEntryFactory& factory);

/// Lets `factory` read `cacheFile`, with the IRI of `root`. The factory is called even when the
/// file is absent, unreadable or not a regular file: it then gets a stream that has failed.
///
/// Errors: `ToolboxCacheWrongFormatException` for every failure, even one of the factory, and
/// whenever the file could not be opened; the factory may then hold some of the entries.
SEARCHPATH_EXPORT void LoadToolboxPathCache(const fl::filesystem::path& cacheFile,
                                            const fl::filesystem::path& root,
                                            IPathEntryFactory& factory);

}  // namespace Corvane::PathManagement

#endif  // SEARCHPATH_UTILITIES_TOOLBOX_PATH_CACHE_H
