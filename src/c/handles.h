#ifndef SEARCHPATH_SRC_C_HANDLES_H
#define SEARCHPATH_SRC_C_HANDLES_H

#include "searchpath/c/searchpath.h"
#include "searchpath/host/environment.h"

#include <string>
#include <vector>

// The objects behind the handles. They keep texts as bytes, so that callers can view them.

struct searchpath_environment {
  Corvane::PathManagement::host::EnvironmentOptions options;  // with which a watch opens it anew
  Corvane::PathManagement::host::Environment environment;
};

struct searchpath_files {
  std::vector<std::string> paths;
};

struct searchpath_explanation {
  struct Asked {  // a folder that was searched
    std::string folder;
    std::string outcome;     // in words
    std::string origin;      // what brought the folder onto the path
    searchpath_files files;  // of the name, in this folder
  };

  std::string rule;  // that decided, in words
  searchpath_files answer;
  std::vector<Asked> asked;  // in the order of the search
  std::string json;          // the whole explanation
};

struct searchpath_shadows {
  struct Shadow {
    std::string name;
    searchpath_files files;          // the first hides the others
    std::vector<std::string> kinds;  // how each of `files` compares with the first; "" for that
  };

  std::vector<Shadow> shadows;
};

#endif  // SEARCHPATH_SRC_C_HANDLES_H
