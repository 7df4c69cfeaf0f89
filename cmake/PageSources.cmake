# Writes the C++ source OUTPUT with the files FRAME, STYLE, SCRIPT (a list: these one after the other) and VIEW (may be
# empty; LICENCE is put before it) of the page, and the hashes that a content security policy names.

# What the browser sees: it takes every end of line for a line feed, so the hash is that of such a text, too.
function(read_text variable)
  set(all "")
  foreach(file IN LISTS ARGN)
    file(READ "${file}" text)
    string(REPLACE "\r\n" "\n" text "${text}")
    string(APPEND all "${text}")
  endforeach()
  set(${variable} "${all}" PARENT_SCOPE)
endfunction()

# The bytes as array elements: compilers have limits for the length of literals.
function(add_text name text)
  string(HEX "${text}" hex)
  string(REGEX REPLACE "([0-9a-f][0-9a-f])" "0x\\1," bytes "${hex}")
  string(LENGTH "${hex}" length)
  math(EXPR length "${length} / 2")
  # One byte more than the text has: no array is empty.
  string(APPEND source "constexpr unsigned char k${name}Bytes[] = {${bytes}0};\n")
  string(APPEND views "const std::string_view k${name} = ViewOf(k${name}Bytes, ${length});\n")
  set(source "${source}" PARENT_SCOPE)
  set(views "${views}" PARENT_SCOPE)
endfunction()

# The SHA-256 in base64, as policies have it.
function(add_hash name text)
  set(digits "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/")
  string(SHA256 hash "${text}")
  # 32 bytes are ten units of three and one of two, which ends with padding.
  string(APPEND hash "00")
  set(base64 "")
  foreach(begin RANGE 0 60 6)
    string(SUBSTRING "${hash}" ${begin} 6 unit)
    foreach(shift IN ITEMS 18 12 6 0)
      math(EXPR digit "0x${unit} >> ${shift} & 63")
      string(SUBSTRING "${digits}" ${digit} 1 digit)
      string(APPEND base64 "${digit}")
    endforeach()
  endforeach()
  string(SUBSTRING "${base64}" 0 43 base64)
  string(APPEND views "const std::string_view k${name} = \"sha256-${base64}=\";\n")
  set(views "${views}" PARENT_SCOPE)
endfunction()

set(source "")
set(views "")
read_text(frame "${FRAME}")
read_text(style "${STYLE}")
read_text(script ${SCRIPT})
add_text(Frame "${frame}")
add_text(Style "${style}")
add_hash(StyleHash "${style}")
add_text(Script "${script}")
add_hash(ScriptHash "${script}")
set(view "")
if(VIEW)
  read_text(view "${VIEW}")
  read_text(licence "${LICENCE}")
  set(view "/* With three.js:\n\n${licence}*/\n${view}")
endif()
add_text(View "${view}")
add_hash(ViewHash "${view}")
file(WRITE "${OUTPUT}" "#include \"host/page/PageSources.h\"

namespace host::page {
namespace {

std::string_view ViewOf(const unsigned char* bytes, std::size_t size) {
    return {reinterpret_cast<const char*>(bytes), size};
}

${source}
}  // namespace

${views}
}  // namespace host::page
")
