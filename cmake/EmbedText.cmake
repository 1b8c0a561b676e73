# Writes OUTPUT, a C++ source whose function FUNCTION (in NAMESPACE, declared
# by HEADER) returns the bytes of INPUT exactly, so that data kept as a file in
# the source tree is built into the program instead of being read at run time.
# Run with cmake -P; the build runs it again whenever INPUT changes.
file(READ "${INPUT}" hex HEX)
string(REGEX REPLACE "([0-9a-f][0-9a-f])" "0x\\1," bytes "${hex}")
# Twenty bytes a line keeps the generated source readable in a debugger.
string(REPEAT "0x..," 20 line)
string(REGEX REPLACE "(${line})" "\\1\n    " bytes "${bytes}")
get_filename_component(name "${INPUT}" NAME)
file(WRITE "${OUTPUT}.tmp"
"// Generated from ${name} by EmbedText.cmake; edit the file, not this.
#include \"${HEADER}\"

namespace ${NAMESPACE} {
namespace {
const unsigned char kBytes[] = {
    ${bytes}};
}  // namespace

const std::string& ${FUNCTION}() {
  static const std::string text(reinterpret_cast<const char*>(kBytes), sizeof kBytes);
  return text;
}

}  // namespace ${NAMESPACE}
")
# Only a changed text touches the output, so that nothing rebuilds for nothing.
file(COPY_FILE "${OUTPUT}.tmp" "${OUTPUT}" ONLY_IF_DIFFERENT)
file(REMOVE "${OUTPUT}.tmp")
