#ifndef SEARCHPATH_SRC_C_HANDLES_H
#define SEARCHPATH_SRC_C_HANDLES_H

#include "searchpath/c/searchpath.h"
#include "searchpath/host/environment.h"

#include <string>
#include <vector>

// What stands behind the handles that are handed out. All texts are bytes already.

struct searchpath_environment {
  Corvane::PathManagement::host::EnvironmentOptions options;  // to make it anew
  Corvane::PathManagement::host::Environment environment;
};

struct searchpath_files {
  std::vector<std::string> paths;
};

struct searchpath_explanation {
  struct Asked {
    std::string folder;
    std::string outcome;
    std::string origin;
    searchpath_files files;
  };

  std::string rule;
  searchpath_files answer;
  std::vector<Asked> asked;
  std::string json;
};

struct searchpath_shadows {
  struct Shadow {
    std::string name;
    searchpath_files files;
    std::vector<std::string> kinds;  // of the files; the first has none
  };

  std::vector<Shadow> shadows;
};

#endif  // SEARCHPATH_SRC_C_HANDLES_H
