#include "tools/generator/emit/OutputFolder.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <set>

#include "tools/generator/emit/Files.h"

namespace qzxml::generator {
namespace {

namespace fs = std::filesystem;

[[noreturn]] void Fail(const fs::path& path, const char* what, const std::string& reason) {
  throw COutputError(path.generic_string() + ": can not be " + what + ": " + reason);
}

std::string Reason() { return errno == 0 ? "unknown failure" : std::strerror(errno); }

// Nothing for a file that is not there or can not be read; it is written then.
std::optional<std::string> Read(const fs::path& path) {
  std::error_code error;
  if (!fs::is_regular_file(path, error)) return std::nullopt;
  std::ifstream stream(path, std::ios::binary);
  if (!stream) return std::nullopt;
  std::string text((std::istreambuf_iterator<char>(stream)), std::istreambuf_iterator<char>());
  return stream.bad() ? std::nullopt : std::optional<std::string>(std::move(text));
}

// By way of a file beside it, so that an interrupted run leaves no half of one.
void Write(const fs::path& path, const std::string& text) {
  std::error_code error;
  if (path.has_parent_path()) fs::create_directories(path.parent_path(), error);
  if (error) Fail(path.parent_path(), "made", error.message());
  fs::path beside = path;
  beside += ".new";
  errno = 0;
  std::ofstream stream(beside, std::ios::binary | std::ios::trunc);
  stream.write(text.data(), static_cast<std::streamsize>(text.size()));
  stream.close();
  if (!stream) {
    const std::string reason = Reason();
    fs::remove(beside, error);
    Fail(path, "written", reason);
  }
  fs::rename(beside, path, error);
  if (!error) return;
  const std::string reason = error.message();
  fs::remove(beside, error);
  Fail(path, "written", reason);
}

// A path of a manifest that leads out of the folder is not ours.
bool IsInside(const fs::path& path) {
  return !path.empty() && path.is_relative() && !path.has_root_path() &&
         std::none_of(path.begin(), path.end(), [](const fs::path& step) { return step == ".."; });
}

void RemoveStale(const fs::path& folder, const std::string& manifest,
                 const std::set<std::string>& present, OutputChanges& changes) {
  for (std::size_t at = 0; at < manifest.size();) {
    const std::size_t end = std::min(manifest.find('\n', at), manifest.size());
    const std::string line = manifest.substr(at, end - at);
    at = end + 1;
    if (present.count(line) != 0 || !IsInside(line)) continue;
    const std::optional<std::string> text = Read(folder / line);
    if (!text || text->compare(0, std::strlen(kFirstWords), kFirstWords) != 0) continue;
    std::error_code error;
    fs::remove(folder / line, error);
    if (error) Fail(folder / line, "removed", error.message());
    ++changes.removed;
    // The folder of a namespace that is gone; one that holds something else stays.
    const fs::path parent = fs::path(line).parent_path();
    if (!parent.empty()) fs::remove(folder / parent, error);
  }
}

}  // namespace

void WriteTextFile(const std::string& path, const std::string& text) { Write(path, text); }

OutputChanges UpdateFolder(const std::string& folder, const std::vector<SourceFile>& files) {
  const fs::path root = folder.empty() ? fs::path(".") : fs::path(folder);
  OutputChanges changes;
  std::set<std::string> present;
  std::string manifest;
  for (const SourceFile& file : files) {
    present.insert(file.path);
    manifest += file.path + '\n';
    if (Read(root / file.path) == file.text) {
      ++changes.unchanged;
    } else {
      Write(root / file.path, file.text);
      ++changes.written;
    }
  }
  RemoveStale(root, Read(root / kManifestName).value_or(""), present, changes);
  Write(root / kManifestName, manifest);
  return changes;
}

}  // namespace qzxml::generator
