#include "tests/support/SmallStack.h"

#include <pthread.h>

#include <exception>
#include <stdexcept>

namespace qztest {
namespace {

struct Task {
  const std::function<void()>* function;
  std::exception_ptr failure;
};

void* Run(void* argument) {
  Task* task = static_cast<Task*>(argument);
  try {
    (*task->function)();
  } catch (...) {
    task->failure = std::current_exception();
  }
  return nullptr;
}

}  // namespace

void RunOnStack(std::size_t octets, const std::function<void()>& function) {
  pthread_attr_t attributes;
  pthread_attr_init(&attributes);
  pthread_attr_setstacksize(&attributes, octets);
  Task task{&function, nullptr};
  pthread_t thread;
  const int error = pthread_create(&thread, &attributes, &Run, &task);
  pthread_attr_destroy(&attributes);
  if (error != 0) throw std::runtime_error("no thread could be started");
  pthread_join(thread, nullptr);
  if (task.failure) std::rethrow_exception(task.failure);
}

}  // namespace qztest
