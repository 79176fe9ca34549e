#include "searchpath/utilities/toolbox_path_cache.h"

#include "searchpath/platform/atomic_file_writer.h"
#include "searchpath/platform/iri_text.h"

#include <exception>

namespace Corvane::PathManagement {

using foundation::storage::vfs::toAbsoluteIRI;

ToolboxCacheWrongFormatException::~ToolboxCacheWrongFormatException() = default;

UnableToSaveToolboxCacheException::~UnableToSaveToolboxCacheException() = default;

const boost::exception_detail::clone_base* UnableToSaveToolboxCacheException::clone() const {
  return new UnableToSaveToolboxCacheException(*this);  // the caller deletes it, as Boost expects
}

void UnableToSaveToolboxCacheException::rethrow() const { throw *this; }

namespace {

/// To be called first in each `catch (...)`. When a thread is cancelled in a factory, its unwinding
/// is caught there as well, though it is no exception. It has to go on: an exception in its place
/// would end the process.
void RethrowIfCancelled() {
  if (std::current_exception() == nullptr) throw;
}

}  // namespace

void WriteToolboxPathCache(const fl::filesystem::path& cacheFile, const fl::filesystem::path& root,
                           const IPathEntryFactory& factory) try {
  fl::filesystem::AtomicFileWriter writer(cacheFile, u"tmpcache_", u".xml");
  factory.WriteEntries(writer.Stream(), toAbsoluteIRI(u"file", root));
  writer.Commit();
} catch (...) {
  RethrowIfCancelled();
  throw UnableToSaveToolboxCacheException();
}

void LoadToolboxPathCache(const fl::filesystem::path& cacheFile, const fl::filesystem::path& root,
                          IPathEntryFactory& factory) try {
  fl::filesystem::ifstream stream(cacheFile);
  factory.ReadEntries(stream, toAbsoluteIRI(u"file", root));
  // A factory may have taken an error of the disk for the end of the file. Whatever is thrown here
  // ends as the exception of the handler below.
  if (!stream.is_open() || stream.bad()) throw ToolboxCacheWrongFormatException();
} catch (...) {
  RethrowIfCancelled();
  throw ToolboxCacheWrongFormatException();
}

}  // namespace Corvane::PathManagement
