#include "answer_record.h"
#include "command_line.h"
#include "commands.h"
#include "difference_output.h"
#include "output.h"
#include "progress.h"
#include "searchpath/model/byte_text.h"

#include <string>
#include <vector>

namespace Corvane::PathManagement::tool {

namespace {

constexpr bool kQuiet = false;  // there is no --quiet

constexpr CommandText kVerifyReceiptText = {
    "verify", "FILE", "Prints which answers in the receipt FILE have changed since find kept them.",
    "  searchpath find plot.zt --path mine:lib --receipt plot.receipt\n"
    "  searchpath verify plot.receipt\n"
    "  searchpath verify plot.receipt --update   and keep the new answers\n",
    "What is printed:\n"
    "  The names that mean another file now (changed OLD -> NEW), no file any more\n"
    "  (gone), or a file for the first time (new), as by diff --names. A file is\n"
    "  another one when it stands in another folder or has another name; its contents\n"
    "  do not count.\n"
    "  Folders, links and rights are looked at, and only names whose answers rest on\n"
    "  what has changed are looked up again, by the rules and with the options of\n"
    "  find, wherever verify is started. A folder that had changed less than two\n"
    "  seconds before find asked it is asked again each time.\n"
    "  --update keeps the new answers when there are any; otherwise FILE is not\n"
    "  touched, so that a build with restat ends there.\n"
    "\n"
    "Exit: 0 no answer has changed, 1 some answer has changed, 2 wrong usage, or FILE\n"
    "is damaged or cannot be read. With --update: 0 FILE is up to date, 2 failure.\n"};

// The one operand. `Parse` has made sure that there is at least one.
const std::string& GetReceiptFile(const CommandLine& commandLine) {
  const auto& files = commandLine.GetOperands();
  if (files.size() == 1) return files.front();
  throw UsageError("a receipt is one FILE; leave out " + Quoted(files[1]));
}

}  // namespace

Outcome RunVerify(const Arguments& arguments) {
  CommandLine commandLine(kVerifyReceiptText);
  OutputOptions outputOptions;
  bool update = false;
  commandLine.AddFlag("--update", update, "keep the new answers");
  outputOptions.AddTo(commandLine);
  outputOptions.AddExitCodeTo(commandLine);
  if (!commandLine.Parse(arguments)) return Outcome::Done;
  const Output output(outputOptions);
  const std::string& file = GetReceiptFile(commandLine);
  const host::Receipt receipt = ReadReceipt(file);
  if (WithProgress(kQuiet, [&] { return receipt.IsFresh(); })) return Outcome::Clean;
  const host::Environment environment(receipt.GetOptions());
  const auto changes = WithProgress(kQuiet, [&] { return receipt.Verify(environment); });
  for (const host::NameChange& change : changes) WriteDifference(output, change);
  if (changes.empty()) return Outcome::Clean;
  if (!update) return Outcome::Findings;
  const auto renewed = WithProgress(kQuiet, [&] { return receipt.Renew(environment); });
  renewed.Save(TextFromBytes(file));
  return Outcome::Clean;
}

}  // namespace Corvane::PathManagement::tool
