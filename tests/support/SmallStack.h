#pragma once

#include <cstddef>
#include <functional>

namespace qztest {

// Runs a function on a thread of its own with a stack of that many octets, and waits for it. An
// exception of the function goes on in the caller.
void RunOnStack(std::size_t octets, const std::function<void()>& function);

}  // namespace qztest
