// Runs a program that does not run as root, for tests that root runs: not-root PROGRAM ARGUMENT...
// Such a program tries whether it could become root; here the kernel answers that it cannot. Everything else, files
// above all, is as the caller has it.
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <iterator>

namespace {

bool refuseToBecomeRoot() {
  sock_filter filter[] = {
      BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
      BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_setuid, 1, 0),
      BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_setgid, 0, 1),
      BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | EPERM),
      BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
  };
  const sock_fprog program{std::size(filter), filter};
  return prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 && prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) == 0;
}

}  // namespace

int main(int count, char** arguments) {
  if (count < 2) return 2;
  if (!refuseToBecomeRoot()) {
    std::perror("not-root");
    return 1;
  }
  execvp(arguments[1], arguments + 1);
  std::perror(arguments[1]);
  return 127;
}
