// POSIX file handling for saves and loads: every system call checked, interrupted calls retried.
#include "host/dxf/AtomicFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstring>
#include <system_error>

namespace host::dxf {
namespace {

std::string failure(std::string_view what, const std::filesystem::path& path, int error) {
  return std::string(what) + " '" + path.string() + "': " + std::strerror(error);
}

class FileDescriptor {
 public:
  explicit FileDescriptor(int fd) : fd_(fd) {}
  FileDescriptor(const FileDescriptor&) = delete;
  FileDescriptor& operator=(const FileDescriptor&) = delete;
  ~FileDescriptor() {
    if (fd_ >= 0) ::close(fd_);
  }
  int get() const { return fd_; }
  // Closes now, so that a failing close (a late write error) can be reported.
  int close() {
    const int result = ::close(fd_);
    fd_ = -1;
    return result;
  }

 private:
  int fd_;
};

int openRetrying(const char* path, int flags, mode_t mode = 0) {
  int fd;
  do {
    fd = ::open(path, flags | O_CLOEXEC, mode);
  } while (fd < 0 && errno == EINTR);
  return fd;
}

// Writes everything or returns the errno that stopped it.
int writeAll(int fd, std::string_view data) {
  while (!data.empty()) {
    const ssize_t written = ::write(fd, data.data(), data.size());
    if (written < 0) {
      if (errno == EINTR) continue;
      return errno;
    }
    data.remove_prefix(static_cast<std::size_t>(written));
  }
  return 0;
}

// The file a save should replace: symbolic links are followed, each relative to the folder of
// the link, so that the links survive; one that points nowhere leads to the file to create.
std::filesystem::path saveTarget(const std::filesystem::path& path, int& error) {
  constexpr int kMaxLinks = 40;  // as the system's own limit, so that a loop ends
  std::filesystem::path target = path;
  for (int followed = 0;; ++followed) {
    struct stat info {};
    if (::lstat(target.c_str(), &info) != 0 || !S_ISLNK(info.st_mode)) return target;
    if (followed == kMaxLinks) {
      error = ELOOP;
      return target;
    }
    std::error_code readError;
    const std::filesystem::path next = std::filesystem::read_symlink(target, readError);
    if (readError) {
      error = readError.value();
      return target;
    }
    target = next.is_absolute() ? next : target.parent_path() / next;
  }
}

// Why a save must not replace what stands at the target, if it must not: only a regular file
// is replaced, and a read-only one is not. As root, access(2) allows every write, so the mode's
// write bits decide; any other user is asked about as the system would ask.
std::optional<std::string> refusalOf(const std::filesystem::path& target, const struct stat& info) {
  if (S_ISDIR(info.st_mode)) return std::string("it is a directory");
  if (S_ISFIFO(info.st_mode)) return std::string("it is a pipe, not a regular file");
  if (S_ISCHR(info.st_mode) || S_ISBLK(info.st_mode)) {
    return std::string("it is a device, not a regular file");
  }
  if (!S_ISREG(info.st_mode)) return std::string("it is not a regular file");
  if (::geteuid() == 0) {
    if ((info.st_mode & 0222) == 0) return std::string("the file is read-only");
  } else if (::faccessat(AT_FDCWD, target.c_str(), W_OK, AT_EACCESS) != 0 && errno == EACCES) {
    return std::string(std::strerror(EACCES));
  }
  return std::nullopt;
}

// The existing file's owner and permissions, given to its replacement. The owner goes first:
// a change of owner clears the set-user-id and set-group-id bits that the mode then restores.
int keepOwnerAndMode(int fd, const struct stat& existing) {
  struct stat made {};
  if (::fstat(fd, &made) != 0) return errno;
  if ((made.st_uid != existing.st_uid || made.st_gid != existing.st_gid) &&
      ::fchown(fd, existing.st_uid, existing.st_gid) != 0) {
    return errno;
  }
  if (::fchmod(fd, existing.st_mode & 07777) != 0) return errno;
  return 0;
}

// Creates the temporary file: the target's name, a dot prefix so that it stays out of listings,
// and the process id with a counter so that concurrent saves never pick the same name.
int createTemporary(const std::filesystem::path& target, std::filesystem::path& temporary,
                    int& error) {
  static std::atomic<unsigned> counter{0};
  for (int attempt = 0; attempt < 100; ++attempt) {
    std::filesystem::path name = target.parent_path();
    name /= "." + target.filename().string() + ".saving-" + std::to_string(::getpid()) + "-" +
            std::to_string(counter.fetch_add(1));
    const int fd = openRetrying(name.c_str(), O_WRONLY | O_CREAT | O_EXCL, 0666);
    error = fd < 0 ? errno : 0;
    if (fd >= 0 || error != EEXIST) {
      temporary = name;
      return fd;
    }
  }
  return -1;
}

}  // namespace

std::optional<std::string> writeFileAtomically(const std::filesystem::path& path,
                                               std::string_view data) {
  int linkError = 0;
  const std::filesystem::path target = saveTarget(path, linkError);
  if (linkError != 0) return failure("cannot follow the link", path, linkError);
  struct stat existing {};
  const bool exists = ::stat(target.c_str(), &existing) == 0;
  if (exists) {
    if (auto refusal = refusalOf(target, existing)) {
      std::string named = "'" + path.string() + "'";
      if (target != path) named += " (a link to '" + target.string() + "')";
      return "cannot save over " + named + ": " + *refusal;
    }
  }
  std::filesystem::path temporary;
  int createError = 0;
  FileDescriptor file(createTemporary(target, temporary, createError));
  if (file.get() < 0) return failure("cannot create a temporary file to save", path, createError);

  auto abandon = [&](std::string_view what, int error) {
    ::unlink(temporary.c_str());
    return failure(what, path, error);
  };
  if (exists) {
    if (const int error = keepOwnerAndMode(file.get(), existing)) {
      return abandon("cannot keep the owner and permissions of", error);
    }
  }
  if (const int error = writeAll(file.get(), data)) return abandon("cannot write", error);
  if (::fsync(file.get()) != 0) return abandon("cannot write", errno);
  if (file.close() != 0) return abandon("cannot write", errno);
  if (::rename(temporary.c_str(), target.c_str()) != 0) return abandon("cannot replace", errno);

  // The rename is durable only once the directory is; a failure here cannot be undone and the
  // new file is in place, so it is not reported.
  const std::filesystem::path directory =
      target.has_parent_path() ? target.parent_path() : std::filesystem::path(".");
  FileDescriptor dir(openRetrying(directory.c_str(), O_RDONLY | O_DIRECTORY));
  if (dir.get() >= 0) ::fsync(dir.get());
  return std::nullopt;
}

std::optional<std::string> whyNotWritable(const std::filesystem::path& path) {
  int linkError = 0;
  const std::filesystem::path target = saveTarget(path, linkError);
  if (linkError != 0) return std::string("cannot follow the link: ") + std::strerror(linkError);
  struct stat info {};
  if (::stat(target.c_str(), &info) == 0) {
    // Said alike for every user, root included, whom the mode alone stops.
    if (S_ISREG(info.st_mode) && (info.st_mode & 0222) == 0) {
      return std::string("the file is read-only");
    }
    return refusalOf(target, info);
  }
  // A new file is made beside the target, so its folder must take one.
  const std::filesystem::path folder =
      target.has_parent_path() ? target.parent_path() : std::filesystem::path(".");
  if (::stat(folder.c_str(), &info) != 0) return std::string(std::strerror(errno));
  if (!S_ISDIR(info.st_mode)) return std::string("the folder is not a directory");
  if (::geteuid() != 0 && ::faccessat(AT_FDCWD, folder.c_str(), W_OK | X_OK, AT_EACCESS) != 0) {
    return std::string(std::strerror(errno));
  }
  return std::nullopt;
}

FileBytes readWholeFile(const std::filesystem::path& path) {
  FileBytes result;
  FileDescriptor file(openRetrying(path.c_str(), O_RDONLY));
  if (file.get() < 0) {
    result.error = failure("cannot open", path, errno);
    return result;
  }
  struct stat info {};
  if (::fstat(file.get(), &info) != 0) {
    result.error = failure("cannot read", path, errno);
    return result;
  }
  if (S_ISDIR(info.st_mode)) {
    result.error = failure("cannot read", path, EISDIR);
    return result;
  }
  // The size is a hint: files that grow or report no size (pipes, /proc) are read to the end.
  std::size_t capacity = info.st_size > 0 ? static_cast<std::size_t>(info.st_size) + 1 : 65536;
  std::string& bytes = result.bytes;
  bytes.resize(capacity);
  std::size_t used = 0;
  for (;;) {
    if (used == bytes.size()) bytes.resize(bytes.size() * 2);
    const ssize_t count = ::read(file.get(), bytes.data() + used, bytes.size() - used);
    if (count < 0) {
      if (errno == EINTR) continue;
      result.error = failure("cannot read", path, errno);
      bytes.clear();
      return result;
    }
    if (count == 0) break;
    used += static_cast<std::size_t>(count);
  }
  bytes.resize(used);
  return result;
}

}  // namespace host::dxf
