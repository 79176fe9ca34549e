#include "command_line.h"
#include "commands.h"
#include "searchpath/host/working_folder.h"
#include "searchpath/model/byte_text.h"
#include "searchpath/platform/iri_text.h"
#include "searchpath/utilities/iri_conversion.h"

#include <nlohmann/json.hpp>

namespace Corvane::PathManagement::tool {

namespace {

constexpr CommandText kIriText = {
    "iri", "TEXT...", "Prints the IRI of each TEXT, its canonical IRI and its native path.",
    "  searchpath iri .                          the working folder\n"
    "  searchpath iri '/usr/my lib'\n"
    "  searchpath iri --json file:///usr/my%20lib\n",
    "TEXT is an IRI, or a pathname, absolute or relative; \"~\" is a home folder. It\n"
    "need not exist. The canonical IRI has its links and \"..\" resolved, as far as it\n"
    "exists. An IRI whose scheme is not \"file\" has no native path.\n"
    "\n"
    "Exit: 0 every TEXT has an IRI, 2 some TEXT has none, wrong usage or failure.\n"};

AbsoluteIRI GetIRI(const ustring& text) {
  return foundation::storage::vfs::hasIRIPrefix(text) ? GetIRIFromString(text)
                                                      : host::WorkingFolder().Locate(text);
}

void WriteIRI(const Output& output, const std::string& typed) {
  const AbsoluteIRI iri = GetIRI(TextFromBytes(typed));
  const std::string text = GetBytes(iri.toString());
  const std::string canonical = GetBytes(GetCanonicalIRI(iri).toString());
  const bool isNative = iri.getScheme() == u"file";
  if (output.IsJson()) {
    nlohmann::ordered_json object;
    AddText(object, "text", TextFromBytes(typed));
    object["iri"] = text;
    object["canonical"] = canonical;
    if (isNative) AddText(object, "path", GetStringFromIRI(iri));
    output.WriteObject(object);
    return;
  }
  output.WriteField("iri", text);
  output.WriteField("canonical", canonical);
  if (isNative) output.WriteField("path", GetBytes(GetStringFromIRI(iri)));
}

// Reports an invalid text and returns false, so that the other texts can be answered.
bool TryToWriteIRI(const Output& output, const std::string& typed) {
  try {
    WriteIRI(output, typed);
    return true;
  } catch (const foundation::storage::vfs::Exception& error) {
    Report(error.what());
  } catch (const current_working_folder::FailedToAbsolutizeException& error) {
    Report(Quoted(typed) + ": " + error.what());
  }
  return false;
}

}  // namespace

Outcome RunIri(const Arguments& arguments) {
  CommandLine commandLine(kIriText);
  OutputOptions outputOptions;
  outputOptions.AddTo(commandLine);
  if (!commandLine.Parse(arguments)) return Outcome::Done;
  const Output output(outputOptions);
  bool succeeded = true;
  for (const std::string& text : commandLine.GetOperands()) {
    succeeded = TryToWriteIRI(output, text) && succeeded;
  }
  return succeeded ? Outcome::Found : Outcome::Failed;
}

}  // namespace Corvane::PathManagement::tool
