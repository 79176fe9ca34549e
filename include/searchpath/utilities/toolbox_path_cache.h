#ifndef SEARCHPATH_UTILITIES_TOOLBOX_PATH_CACHE_H
#define SEARCHPATH_UTILITIES_TOOLBOX_PATH_CACHE_H

#include "searchpath/export.h"
#include "searchpath/model/path_entry_factory.h"
#include "searchpath/platform/exception.h"
#include "searchpath/platform/filesystem.h"

#include <boost/exception/exception.hpp>

#include <exception>

namespace Corvane::PathManagement {

/// A cache could not be opened or read back. Scan the folders, and write a new one.
class SEARCHPATH_EXPORT ToolboxCacheWrongFormatException : public std::exception {
 public:
  ToolboxCacheWrongFormatException() = default;
  ToolboxCacheWrongFormatException(const ToolboxCacheWrongFormatException&) = default;
  ToolboxCacheWrongFormatException& operator=(const ToolboxCacheWrongFormatException&) = default;
  ~ToolboxCacheWrongFormatException() override;
};

/// A cache could not be written or put in place. `boost::current_exception` and
/// `boost::rethrow_exception` keep its type.
class SEARCHPATH_EXPORT UnableToSaveToolboxCacheException
    : public foundation::core::except::Exception<foundation::core::except::IInternalException,
                                                 std::exception>,
      // Virtual, as Boost's own wrappers have it: one base, whoever wraps this.
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

/// Replaces `cacheFile` by what `factory` writes when it is given the IRI of `root`. At every
/// moment, also after a kill or a power cut, a reader finds either all of the old cache or all of
/// the new one.
///
/// The new file takes over the permissions of a regular file; a link is replaced, not followed; a
/// folder, FIFO or device is refused. During the write a file called "tmpcache_*.xml" stands beside
/// the cache; one that a kill has left there may be removed.
///
/// Threads: several writers of one cache at once need no lock, the last one wins.
/// Errors: `UnableToSaveToolboxCacheException` for every failure, those of the factory and a `root`
/// that is no absolute path included; the old cache is then unchanged.
/// Cost: besides the factory's, waits for the disk.
SEARCHPATH_EXPORT void WriteToolboxPathCache(const fl::filesystem::path& cacheFile,
                                             const fl::filesystem::path& root,
                                             const IPathEntryFactory& factory);

/// Lets `factory` read `cacheFile`, giving it the IRI of `root`. The factory is asked even when the
/// file is absent, unreadable or not a regular one; its stream has then failed.
///
/// Errors: `ToolboxCacheWrongFormatException` for every failure, the factory's included, and
/// whenever the file could not be opened; the factory may then hold some of the entries.
SEARCHPATH_EXPORT void LoadToolboxPathCache(const fl::filesystem::path& cacheFile,
                                            const fl::filesystem::path& root,
                                            IPathEntryFactory& factory);

}  // namespace Corvane::PathManagement

#endif  // SEARCHPATH_UTILITIES_TOOLBOX_PATH_CACHE_H
