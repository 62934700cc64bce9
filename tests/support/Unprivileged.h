#pragma once

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <functional>
#include <string>

#include "qzxml/runtime/QzException.h"

namespace qztest {

// The text of the failure that a call is answered with in a process that may not open a file,
// though this one may: the rights of the superuser are given up there. "nothing" where it does not
// fail.
inline std::string FailureWithoutRights(const std::string& path,
                                        const std::function<void()>& call) {
  constexpr uid_t kNobody = 65534;
  int ends[2];
  if (chmod(path.c_str(), 0) != 0 || pipe(ends) != 0) return "no pipe";
  const pid_t child = fork();
  if (child == 0) {
    std::string text = "nothing";
    try {
      if (geteuid() == 0 && setuid(kNobody) != 0) text = "no other user";
      call();
    } catch (const QzXmlLib16::CQzException& e) {
      text = e.GetFullMessage();
    }
    _exit(write(ends[1], text.data(), text.size()) < 0 ? 1 : 0);
  }
  close(ends[1]);
  std::string text;
  char piece[256];
  for (ssize_t count = 0; (count = read(ends[0], piece, sizeof(piece))) > 0;) {
    text.append(piece, static_cast<std::size_t>(count));
  }
  close(ends[0]);
  int status = 0;
  waitpid(child, &status, 0);
  return text;
}

}  // namespace qztest
