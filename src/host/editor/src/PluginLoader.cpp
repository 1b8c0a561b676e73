// Loading and messaging the module through dlopen.
#include "host/editor/PluginLoader.h"

#include <dlfcn.h>

#include <cstring>
#include <system_error>

#include "platform/Text.h"

namespace host {

namespace {

std::wstring quoted(const std::filesystem::path& path) {
  return L"'" + platform::fromUtf8(path.string()) + L"'";
}

std::wstring lastDlError() {
  const char* text = dlerror();
  return text == nullptr ? std::wstring(L"unknown error") : platform::fromUtf8(text);
}

std::wstring hexText(int value) {
  static const wchar_t digits[] = L"0123456789ABCDEF";
  auto bits = static_cast<unsigned>(value);
  std::wstring text;
  do {
    text.insert(text.begin(), digits[bits & 0xF]);
    bits >>= 4;
  } while (bits != 0);
  return L"0x" + text;
}

// dlsym hands out functions as object pointers; copying the bits is the one
// conversion every compiler accepts without complaint.
template <typename Function>
Function symbol(void* handle, const char* name) {
  void* address = dlsym(handle, name);
  Function function = nullptr;
  static_assert(sizeof(function) == sizeof(address));
  std::memcpy(&function, &address, sizeof(function));
  return function;
}

}  // namespace

PluginLoader::~PluginLoader() {
  unload();
}

std::optional<std::wstring> PluginLoader::load(const std::filesystem::path& path,
                                               platform::Host& host) {
  if (isLoaded()) return L"Cannot load " + quoted(path) + L": " + quoted(path_) + L" is loaded";
  // dlopen searches the library path for a bare file name; the user means a file here.
  const std::filesystem::path file = path.has_parent_path() ? path : "." / path;
  dlerror();
  void* handle = dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (handle == nullptr) return L"Cannot load " + quoted(path) + L": " + lastDlError();

  dlerror();
  const auto entryPoint = symbol<platform::EntryPointFunction>(handle, "acrxEntryPoint");
  if (entryPoint == nullptr) {
    std::wstring error = L"Cannot load " + quoted(path) + L": " + lastDlError();
    dlclose(handle);
    return error;
  }
  dlerror();
  const auto apiVersion = symbol<platform::ApiVersionFunction>(handle, "acrxGetApiVersion");
  if (apiVersion == nullptr) {
    std::wstring error = L"Cannot load " + quoted(path) + L": " + lastDlError();
    dlclose(handle);
    return error;
  }
  const int version = apiVersion();
  if (version != platform::kApiVersion) {
    dlclose(handle);
    return L"Cannot load " + quoted(path) + L": it was built for API version " + hexText(version) +
           L", this host has " + hexText(platform::kApiVersion);
  }

  handle_ = handle;
  entryPoint_ = entryPoint;
  packet_.host = &host;
  packet_.moduleHandle = handle;
  path_ = path;
  return std::nullopt;
}

int PluginLoader::send(unsigned message) {
  if (!isLoaded()) return platform::kRetError;
  try {
    return entryPoint_(message, &packet_);
  } catch (...) {
    // The module is written not to throw; if it does, the host survives it.
    return platform::kRetError;
  }
}

void PluginLoader::unload() {
  if (!isLoaded()) return;
  send(platform::AppMsg::kUnloadApp);
  dlclose(handle_);
  handle_ = nullptr;
  entryPoint_ = nullptr;
  packet_ = platform::AppPacket();
  path_.clear();
}

std::filesystem::path defaultPluginPath(const std::filesystem::path& executableDirectory) {
  std::filesystem::path installed =
      (executableDirectory / ".." / "lib" / "zarvel.so").lexically_normal();
  std::error_code error;
  if (std::filesystem::exists(installed, error)) return installed;
  return executableDirectory / "zarvel.so";
}

std::filesystem::path defaultPluginPath() {
  std::error_code error;
  const std::filesystem::path executable = std::filesystem::read_symlink("/proc/self/exe", error);
  if (error) return defaultPluginPath(std::filesystem::current_path(error));
  return defaultPluginPath(executable.parent_path());
}

}  // namespace host
