# What the libraries stand on. The installed package looks for the public ones again: config.cmake.in.

find_package(Boost 1.81 CONFIG REQUIRED) # public headers
find_package(ICU 72 REQUIRED COMPONENTS uc)
find_package(nlohmann_json 3.11 CONFIG REQUIRED)
find_package(TBB 2021 CONFIG REQUIRED COMPONENTS tbb)
find_package(uriparser 0.9.7 CONFIG REQUIRED char)
find_package(FlatBuffers 2.0 CONFIG REQUIRED)
find_package(spdlog 1.10 CONFIG REQUIRED)
find_package(Threads REQUIRED)
find_package(PkgConfig REQUIRED)
pkg_check_modules(xxhash REQUIRED IMPORTED_TARGET libxxhash>=0.8.1)

if(SEARCHPATH_BUILD_TOOL)
  find_package(CLI11 2.1 CONFIG REQUIRED)
endif()
if(SEARCHPATH_BUILD_TESTS)
  find_package(GTest 1.12 CONFIG REQUIRED)
endif()
