#include "searchpath/host/receipt.h"

#include "host/folder/entry_state.h"
#include "host/folder/open_path.h"
#include "host/path/path_view.h"
#include "host/receipts/receipt_body.h"
#include "host/receipts/receipt_check.h"
#include "searchpath/model/byte_text.h"
#include "searchpath/platform/atomic_file_writer.h"
#include "searchpath/platform/iri_text.h"

#include <algorithm>
#include <string>
#include <utility>

namespace Corvane::PathManagement::host {

namespace {

/// A new entry for the folder with the number `place` in a receipt.
std::shared_ptr<const FolderEntry> FolderAt(const ReceiptBody& body, std::uint32_t place) {
  const ustring path = TextFromBytes(body.PathAt(place));
  return FolderEntry::Create(foundation::storage::vfs::toAbsoluteIRI(u"file", path));
}

/// Whether `now` is the file that a question was answered with.
bool IsSame(const ReceiptBody& body, const AskedQuestion& question,
            const boost::optional<FoundItem>& now) {
  if (!now || question.place == kNoPlace) return !now && question.place == kNoPlace;
  const PathItem& item = *now->GetPathItem();
  return BytesFromText(item.GetName() + item.GetExtension()) == question.file &&
         NativeBytes(now->GetPathEntry()->GetCanonicalAbsoluteIRI()) ==
             body.TextOf(body.PlaceAt(question.place).canonical());
}

/// `question` as receipts number questions. Precondition: it is below their count, so it fits.
std::uint32_t Number(std::size_t question) { return static_cast<std::uint32_t>(question); }

boost::optional<FoundItem> AskAgain(const Environment& environment, const Lookup& lookup) {
  try {
    return environment.Find(lookup);
  } catch (const current_working_folder::FailedToAbsolutizeException&) {
    return boost::none;  // the folder that `lookup` asks from is gone
  }
}

}  // namespace

Receipt::Receipt(std::shared_ptr<const ReceiptBody> verified) : body(std::move(verified)) {}

Receipt Receipt::Read(std::istream& stream) {
  return Receipt(std::make_shared<const ReceiptBody>(ReadEnvelope(stream, kReceiptFormat)));
}

Receipt Receipt::Load(const fl::filesystem::path& file) {
  fl::filesystem::ifstream stream(file);
  CheckOpen(stream, file);
  return Read(stream);
}

void Receipt::Write(std::ostream& stream) const {
  WriteEnvelope(stream, kReceiptFormat, body->Bytes());
}

void Receipt::Save(const fl::filesystem::path& file) const {
  fl::filesystem::AtomicFileWriter writer(file, u"tmpreceipt_", u".tmp");
  Write(writer.Stream());
  writer.Commit();
}

std::size_t Receipt::GetCount() const noexcept { return body->CountQuestions(); }

ustring Receipt::GetName(std::size_t at) const {
  return TextFromBytes(body->QuestionAt(Number(at)).name);
}

std::optional<FoundItem> Receipt::GetAnswer(std::size_t at) const {
  const AskedQuestion question = body->QuestionAt(Number(at));
  if (question.place == kNoPlace) return std::nullopt;
  const auto folder = FolderAt(*body, question.place);
  return FoundItem(
      std::make_shared<const PathItem>(CreateItem(folder->GetAbsoluteIRI(), question.file)),
      folder);
}

Lookup Receipt::GetLookup(std::size_t at) const {
  const std::uint32_t kindNumber = body->QuestionAt(Number(at)).kind;
  const receipts::Kind& kind = *body->Get().kinds()->Get(kindNumber);
  Lookup lookup{.name = GetName(at)};
  for (const receipts::Text& extension : body->ExtensionsOf(kindNumber)) {
    lookup.extensions.push_back(TextFromBytes(body->TextOf(extension)));
  }
  lookup.policy = static_cast<FilenameMatchingPolicy>(kind.policy());
  if (kind.has_from()) lookup.fromFolder = TextFromBytes(body->TextOf(kind.from()));
  if (kind.has_after()) lookup.afterFolder = TextFromBytes(body->TextOf(kind.after()));
  return lookup;
}

EnvironmentOptions Receipt::GetOptions() const {
  const receipts::Path& path = *body->Get().path();
  const auto textsOf = [this](const auto& texts) {
    std::vector<ustring> folders;
    folders.reserve(texts.size());
    for (const auto* text : texts) folders.push_back(TextFromBytes(body->TextOf(*text)));
    return folders;
  };
  EnvironmentOptions options{.folders = textsOf(*path.folders()),
                             .keepDuplicates = path.keep_duplicates(),
                             .without = textsOf(*path.without()),
                             .quoteFolders = textsOf(*path.quote_folders())};
  if (path.recursive()) options.expansion = FolderExpansion::Recursive;
  if (path.packages()->size() > 0) options.packages = textsOf(*path.packages()).front();
  if (path.timeout() >= 0) options.timeout = std::chrono::milliseconds(path.timeout());
  if (const auto folder = body->TextOf(*path.working_folder()); !folder.empty()) {
    options.workingFolder = foundation::storage::vfs::toAbsoluteIRI(u"file", TextFromBytes(folder));
  }
  const receipts::Rules& rules = *path.rules();
  options.rules = {.foldersHaveMeaning = rules.folders_have_meaning(),
                   .separator = static_cast<LookupRules::Separator>(rules.separator()),
                   .files = static_cast<LookupRules::Files>(rules.files()),
                   .emptyPart = static_cast<LookupRules::EmptyPart>(rules.empty_part()),
                   .expandsParts = rules.expands_parts(),
                   .dropsRepeats = rules.drops_repeats()};
  return options;
}

bool Receipt::IsFresh() const { return ReceiptCheck(*body).IsFresh(); }

std::vector<NameChange> Receipt::Verify(const Environment& environment) const {
  const ReceiptCheck check(*body);
  std::vector<NameChange> changes;
  if (check.IsFresh()) return changes;
  const bool asksAll = check.ConcernsAll() || (check.ConcernsPath() && !IsSamePath(environment));
  for (std::uint32_t at = 0; at < body->CountQuestions(); ++at) {
    if (!asksAll && !check.Concerns(at)) continue;
    const auto now = AskAgain(environment, GetLookup(at));
    if (IsSame(*body, body->QuestionAt(at), now)) continue;
    changes.push_back({GetName(at), GetAnswer(at), {}});
    if (now) changes.back().after = *now;
  }
  return changes;
}

/// Whether the path of the environment has the folders that it had when the receipt was made.
bool Receipt::IsSamePath(const Environment& environment) const {
  const auto& folders = environment.view->GetFolderPath().GetMainFolders();
  const auto places = body->ListAt(0);  // those of the path
  return std::equal(folders.begin(), folders.end(), places.begin(), places.end(),
                    [this](const auto& folder, std::uint32_t place) {
                      return NativeBytes(folder->GetAbsoluteIRI()).value_or("/dev/null") ==
                             body->PathAt(place);
                    });
}

Receipt Receipt::Renew(const Environment& environment) const {
  ReceiptRecorder recorder(environment);
  for (std::size_t at = 0; at < GetCount(); ++at) {
    const Lookup lookup = GetLookup(at);
    recorder.Add(lookup, AskAgain(environment, lookup));
  }
  return recorder.Finish();
}

}  // namespace Corvane::PathManagement::host
