#ifndef SEARCHPATH_TESTS_SUPPORT_REFUSED_CALLS_H
#define SEARCHPATH_TESTS_SUPPORT_REFUSED_CALLS_H

#include <sys/prctl.h>
#include <sys/syscall.h>

#include <cstddef>
#include <functional>
#include <iterator>
#include <linux/filter.h>
#include <linux/seccomp.h>

namespace Corvane::PathManagement::test {

/// Has this process get `error` from each system call `number` from now on whose argument at
/// `index` has one of the bits of `mask`. It takes no rights to ask for that. For children only:
/// there is no way back.
inline std::function<void()> Refusing(unsigned number, unsigned index, unsigned mask,
                                      unsigned error) {
  return [=] {
    const unsigned argument = offsetof(seccomp_data, args) + index * 8;  // its lower half
    sock_filter steps[] = {BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
                           BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, number, 0, 3),
                           BPF_STMT(BPF_LD | BPF_W | BPF_ABS, argument),
                           BPF_JUMP(BPF_JMP | BPF_JSET | BPF_K, mask, 0, 1),
                           BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | error),
                           BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW)};
    const sock_fprog filter = {std::size(steps), steps};
    prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0);
    prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &filter);
  };
}

}  // namespace Corvane::PathManagement::test

#endif  // SEARCHPATH_TESTS_SUPPORT_REFUSED_CALLS_H
