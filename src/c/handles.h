#ifndef SEARCHPATH_SRC_C_HANDLES_H
#define SEARCHPATH_SRC_C_HANDLES_H

#include "searchpath/c/searchpath.h"
#include "searchpath/host/environment.h"

#include <string>
#include <vector>

// The objects behind the handles. Their texts are bytes already, so that callers can view them.

struct searchpath_environment {
  Corvane::PathManagement::host::EnvironmentOptions options;  // for a watch of this path
  Corvane::PathManagement::host::Environment environment;
};

struct searchpath_files {
  std::vector<std::string> paths;
};

struct searchpath_explanation {
  struct Asked {  // a folder that was searched
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
    std::vector<std::string> kinds;  // of `files`; "" for the first, which hides the others
  };

  std::vector<Shadow> shadows;
};

#endif  // SEARCHPATH_SRC_C_HANDLES_H
