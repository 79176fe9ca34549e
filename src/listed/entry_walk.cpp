#include "listed/entry_walk.h"

namespace Corvane::PathManagement::detail {

PathEntries EntriesBelow(const IPathEntry& entry) {
  PathEntries below;
  for (auto single : {entry.GetSingleSubfolderEntryA(), entry.GetSingleSubfolderEntryB()}) {
    if (single != nullptr) below.push_back(std::move(single));
  }
  for (const auto& several :
       {entry.GetSubfolderEntriesA(), entry.GetSubfolderEntriesB(), entry.GetSubfolderEntriesC()}) {
    below.insert(below.end(), several->begin(), several->end());
  }
  return below;
}

}  // namespace Corvane::PathManagement::detail
