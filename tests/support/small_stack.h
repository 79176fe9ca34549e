#ifndef SEARCHPATH_TESTS_SUPPORT_SMALL_STACK_H
#define SEARCHPATH_TESTS_SUPPORT_SMALL_STACK_H

#include <gtest/gtest.h>

#include <functional>
#include <pthread.h>

namespace Corvane::PathManagement::test {

/// Runs `work` on a thread with a stack of 512 KiB.
inline void OnASmallStack(std::function<void()> work) {
  pthread_attr_t attributes;
  pthread_attr_init(&attributes);
  EXPECT_EQ(pthread_attr_setstacksize(&attributes, 512 * 1024), 0);
  const auto run = [](void* given) -> void* {
    (*static_cast<std::function<void()>*>(given))();
    return nullptr;
  };
  pthread_t thread = {};
  ASSERT_EQ(pthread_create(&thread, &attributes, run, &work), 0);
  pthread_join(thread, nullptr);
  pthread_attr_destroy(&attributes);
}

}  // namespace Corvane::PathManagement::test

#endif  // SEARCHPATH_TESTS_SUPPORT_SMALL_STACK_H
