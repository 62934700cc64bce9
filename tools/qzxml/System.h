#pragma once

#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <string>

// What the program asks of the operating system.
namespace qztool {

// Whether standard error is a terminal.
bool IsErrorATerminal();

// The whole of a file, of any kind, or of the stream for "-". Throws CFailure with ExitCode_File
// and "<name>: can not be read: <what the system says>", and for more than 4 GiB - 1 octets
// "<name>: files of 4 GiB or more are not supported".
std::string ReadInput(const std::string& name, std::istream& standardInput);

// Writes the whole of a file, or to the stream for "-". A regular file appears whole or not at all:
// the octets go to a file beside it, which then takes its name and the permissions that were there;
// when anything fails, or the program is interrupted, that file is removed. What is no regular file
// (a pipe, a device) is written as it is, and /dev/stdout, /dev/stderr and /dev/fd/N go on where
// the descriptor stands. A link stays, and what it leads to is written. Throws CFailure with
// ExitCode_File and "<name>: can not be written: <what the system says>".
void WriteOutput(const std::string& name, const std::string& octets, std::ostream& standardOutput);

// For what went to standard output piece by piece. Throws as WriteOutput does, with the name "-".
void FlushOutput(std::ostream& standardOutput);

}  // namespace qztool
