#include "c/border.h"
#include "c/handles.h"
#include "c/texts.h"
#include "searchpath/host/explanation_json.h"
#include "searchpath/host/native_location.h"
#include "searchpath/utilities/iri_conversion.h"

#include <optional>
#include <stdexcept>

namespace {

namespace paths = Corvane::PathManagement;
namespace host = paths::host;
using paths::c::BytesOf;
using paths::c::HandOut;
using paths::c::LookupOf;
using paths::c::TextsOf;
using paths::c::View;

/// The rules called `name`; null means "environment".
host::LookupRules RulesNamed(const char* name) {
  const auto rules = host::FindRules(name == nullptr ? "environment" : name);
  if (!rules) throw std::invalid_argument("there are no rules of that name");
  return *rules;
}

/// The working folder of the process; nullopt when it has been removed. Relative folders then
/// cannot be found.
std::optional<paths::AbsoluteIRI> FindWorkingFolder() {
  try {
    return host::WorkingFolder().Locate(".");
  } catch (const Corvane::current_working_folder::FailedToAbsolutizeException&) {
    return std::nullopt;
  }
}

searchpath_files FilesOf(const std::vector<paths::FoundItem>& found) {
  searchpath_files files;
  for (const auto& file : found) files.paths.push_back(BytesOf(host::GetLocationText(file)));
  return files;
}

}  // namespace

uint32_t searchpath_version(void) { return SEARCHPATH_C_VERSION; }

searchpath_status searchpath_environment_open(const char* const* folders, size_t folder_count,
                                              int recursive, const char* rules,
                                              searchpath_environment** environment,
                                              searchpath_error* error) {
  return HandOut(environment, error, [&] {
    const host::EnvironmentOptions options{.folders = TextsOf(folders, folder_count),
                                           .workingFolder = FindWorkingFolder(),
                                           .expansion = recursive == 0
                                                            ? host::FolderExpansion::Alone
                                                            : host::FolderExpansion::Recursive,
                                           .rules = RulesNamed(rules)};
    return std::make_unique<searchpath_environment>(options, host::Environment(options));
  });
}

void searchpath_environment_free(searchpath_environment* environment) { delete environment; }

searchpath_status searchpath_find(const searchpath_environment* environment,
                                  const searchpath_lookup* lookup, searchpath_files** files,
                                  searchpath_error* error) {
  return HandOut(files, error, [&] {
    auto made = std::make_unique<searchpath_files>();
    const auto found = environment->environment.Find(LookupOf(lookup));
    if (found) made->paths.push_back(BytesOf(host::GetLocationText(*found)));
    return made;
  });
}

searchpath_status searchpath_find_all(const searchpath_environment* environment,
                                      const searchpath_lookup* lookup, searchpath_files** files,
                                      searchpath_error* error) {
  return HandOut(files, error, [&] {
    return std::make_unique<searchpath_files>(
        FilesOf(environment->environment.FindAll(LookupOf(lookup))));
  });
}

size_t searchpath_files_count(const searchpath_files* files) { return files->paths.size(); }

searchpath_text searchpath_files_path(const searchpath_files* files, size_t index) {
  return View(files->paths[index]);
}

void searchpath_files_free(searchpath_files* files) { delete files; }

searchpath_status searchpath_explain(const searchpath_environment* environment,
                                     const searchpath_lookup* lookup,
                                     searchpath_explanation** explanation,
                                     searchpath_error* error) {
  return HandOut(explanation, error, [&] {
    const auto explained = environment->environment.Explain(LookupOf(lookup));
    auto made = std::make_unique<searchpath_explanation>();
    made->json = host::GetJson(lookup->name, explained);
    made->rule = host::GetText(explained.rule);
    made->answer = FilesOf(explained.files);
    for (const auto& asked : explained.asked) {
      made->asked.push_back({BytesOf(paths::GetStringFromIRI(asked.folder->GetAbsoluteIRI())),
                             host::GetText(asked.outcome), BytesOf(asked.origin.folder),
                             FilesOf(asked.files)});
    }
    return made;
  });
}

searchpath_text searchpath_explanation_rule(const searchpath_explanation* explanation) {
  return View(explanation->rule);
}

const searchpath_files* searchpath_explanation_answer(const searchpath_explanation* explanation) {
  return &explanation->answer;
}

size_t searchpath_explanation_count(const searchpath_explanation* explanation) {
  return explanation->asked.size();
}

searchpath_text searchpath_explanation_folder(const searchpath_explanation* explanation,
                                              size_t index) {
  return View(explanation->asked[index].folder);
}

searchpath_text searchpath_explanation_outcome(const searchpath_explanation* explanation,
                                               size_t index) {
  return View(explanation->asked[index].outcome);
}

searchpath_text searchpath_explanation_origin(const searchpath_explanation* explanation,
                                              size_t index) {
  return View(explanation->asked[index].origin);
}

const searchpath_files* searchpath_explanation_files(const searchpath_explanation* explanation,
                                                     size_t index) {
  return &explanation->asked[index].files;
}

searchpath_text searchpath_explanation_json(const searchpath_explanation* explanation) {
  return View(explanation->json);
}

void searchpath_explanation_free(searchpath_explanation* explanation) { delete explanation; }

searchpath_status searchpath_find_shadows(const searchpath_environment* environment,
                                          const searchpath_lookup* lookup,
                                          searchpath_shadows** shadows, searchpath_error* error) {
  return HandOut(shadows, error, [&] {
    host::ShadowLookup question;
    if (lookup != nullptr) {
      question.extensions = TextsOf(lookup->extensions, lookup->extension_count);
      if (lookup->ignore_case != 0) question.policy = paths::FilenameMatchingPolicy::IgnoreCase;
    }
    auto made = std::make_unique<searchpath_shadows>();
    for (const auto& shadow : environment->environment.FindShadows(question).shadows) {
      auto& added = made->shadows.emplace_back();
      added.name = BytesOf(shadow.name);
      added.files = FilesOf({shadow.winner});
      added.kinds.emplace_back();  // "" for the winner
      for (const auto& hidden : shadow.hidden) {
        added.files.paths.push_back(BytesOf(host::GetLocationText(hidden.file)));
        added.kinds.emplace_back(host::GetText(hidden.kind));
      }
    }
    return made;
  });
}

size_t searchpath_shadows_count(const searchpath_shadows* shadows) {
  return shadows->shadows.size();
}

searchpath_text searchpath_shadows_name(const searchpath_shadows* shadows, size_t index) {
  return View(shadows->shadows[index].name);
}

const searchpath_files* searchpath_shadows_files(const searchpath_shadows* shadows, size_t index) {
  return &shadows->shadows[index].files;
}

searchpath_text searchpath_shadows_kind(const searchpath_shadows* shadows, size_t index,
                                        size_t file) {
  return View(shadows->shadows[index].kinds[file]);
}

void searchpath_shadows_free(searchpath_shadows* shadows) { delete shadows; }
