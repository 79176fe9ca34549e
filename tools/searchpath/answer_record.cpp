#include "answer_record.h"

#include "command_line.h"
#include "output.h"
#include "searchpath/host/depfile.h"
#include "searchpath/host/invalid_listing_exception.h"
#include "searchpath/model/byte_text.h"
#include "searchpath/platform/atomic_file_writer.h"

#include <stdexcept>

namespace Corvane::PathManagement::tool {

namespace {

constexpr const char* kRecordNotes =
    "What the answers rest on:\n"
    "  --receipt FILE keeps the names, the files that they mean, and the folders that\n"
    "  were asked up to each answer, so that searchpath verify FILE finds out later\n"
    "  which answers have changed. FILE is replaced in one step.\n"
    "  --depfile FILE --target NAME writes a rule for make or ninja: NAME depends on\n"
    "  the files found, and on each folder in which a new file could change an\n"
    "  answer. See docs/builds.md.\n"
    "\n";

void WriteDepfile(const std::string& file, const std::string& target,
                  const host::Receipt& receipt) {
  fl::filesystem::AtomicFileWriter writer(TextFromBytes(file), u"tmpdepfile_", u".tmp");
  try {
    const auto unwritten = host::WriteDepfile(writer.Stream(), TextFromBytes(target), receipt);
    for (const ustring& path : unwritten) {
      Report("cannot write " + Quoted(path) + " into " + Quoted(file) +
             ": make and ninja do not agree on how to write it");
    }
  } catch (const std::invalid_argument& invalid) {
    throw UsageError("--target " + Quoted(target) + ": " + invalid.what());
  }
  writer.Commit();
}

}  // namespace

void RecordOptions::AddTo(CommandLine& commandLine) {
  commandLine.AddValue("--receipt", "FILE", receipt, "keep the answers for searchpath verify FILE");
  commandLine.AddValue("--depfile", "FILE", depfile, "write a rule for make or ninja to FILE");
  commandLine.AddValue("--target", "NAME", target, "what the rule of --depfile is for");
  commandLine.AddNotes(kRecordNotes);
}

void RecordOptions::Check() const {
  if (depfile && !target) {
    throw UsageError("--depfile needs the name of what depends on the files: --target NAME");
  }
  if (target && !depfile) throw UsageError("--target is for --depfile FILE; leave out --target");
}

host::Receipt ReadReceipt(const std::string& file) try {
  return host::Receipt::Load(TextFromBytes(file));
} catch (const host::InvalidListingException& invalid) {
  throw UsageError("cannot use " + Quoted(file) + ": " + invalid.what());
}

void WriteRecord(const RecordOptions& options, const host::Receipt& receipt) {
  if (options.receipt) receipt.Save(TextFromBytes(*options.receipt));
  if (options.depfile) WriteDepfile(*options.depfile, *options.target, receipt);
}

}  // namespace Corvane::PathManagement::tool
