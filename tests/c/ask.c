/* ask NAME FOLDER...: prints every file that NAME could mean on the path of these folders. */
#include "searchpath/c/searchpath.h"

#include <stdio.h>

int main(int count, char** words) {
  searchpath_error error;
  searchpath_environment* environment;
  searchpath_files* files;
  searchpath_lookup lookup = {0};
  size_t at;
  const char* const* folders = (const char* const*)words + 2;
  lookup.name = words[1];
  if (searchpath_environment_open(folders, (size_t)count - 2, 0, NULL, &environment, &error) ||
      searchpath_find_all(environment, &lookup, &files, &error)) {
    fprintf(stderr, "%s\n", error.message);
    return 2;
  }
  for (at = 0; at < searchpath_files_count(files); ++at) {
    const searchpath_text path = searchpath_files_path(files, at);
    fwrite(path.bytes, 1, path.size, stdout);
    putchar('\n');
  }
  searchpath_files_free(files);
  searchpath_environment_free(environment);
  return at == 0;
}
