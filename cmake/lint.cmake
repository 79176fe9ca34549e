# clang-tidy runs with the compiler, so that the build remembers which sources have passed. A change of
# its rules changes its command line, and so all sources are looked at again. Several sources as one
# would hide from it what a source must not rely on.
set(rules ${PROJECT_SOURCE_DIR}/.clang-tidy)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${rules})
file(MD5 ${rules} rules)
set(CMAKE_CXX_CLANG_TIDY clang-tidy-19 --quiet --extra-arg=-DSEARCHPATH_LINT_RULES=0x${rules})
set(CMAKE_UNITY_BUILD OFF)
