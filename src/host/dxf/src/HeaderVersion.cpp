// Versions from the 2000 format to the 2018 one.
#include "HeaderVersion.h"

#include "host/dxf/ParseError.h"

namespace host::dxf {

std::string supportedVersion(const std::string& acadVersion, std::size_t versionLine,
                             std::size_t headerLine) {
  const std::string version = acadVersion.empty() ? std::string("AC1009") : acadVersion;
  static const char* const kSupported[] = {"AC1015", "AC1018", "AC1021",
                                           "AC1024", "AC1027", "AC1032"};
  for (const char* v : kSupported) {
    if (version == v) return version;
  }
  // A header without $ACADVER is older than the variable: the header is what to look at.
  throw ParseError(versionLine != 0 ? versionLine : headerLine,
                   "drawing files of version " + version +
                       (versionLine != 0 ? "" : " (a header without $ACADVER)") +
                       " are not supported; versions AC1015 (2000) to AC1032 (2018) are");
}

}  // namespace host::dxf
