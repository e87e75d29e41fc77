# Writes a C++ source that holds a file's bytes: cmake -DINPUT=file -DOUTPUT=source.cpp
# -DSYMBOL=name -P embed_bytes.cmake. The array is NAME and its length NAME + "Size".
#
# The array lies in a section of its own that starts and ends on 64 KB boundaries (its tail
# filled with zeros): the kernel maps up to 64 KB of a file around every page a program
# touches, so bytes next to data in use would count as resident memory, while these are read
# only when they are used.
file(READ "${INPUT}" hex HEX)
string(LENGTH "${hex}" digits)
math(EXPR size "${digits} / 2")
math(EXPR padded "(${size} + 65535) / 65536 * 65536")
string(REGEX REPLACE "(..)" "0x\\1," bytes "${hex}")
string(REGEX REPLACE "((0x..,){24})" "\\1\n" bytes "${bytes}")
file(WRITE "${OUTPUT}.tmp" "// Made at build time from ${INPUT}; not to be edited.\n#include <cstddef>\n\n"
  "extern \"C\" __attribute__((section(\"${SYMBOL}_section\"), aligned(65536))) const unsigned char ${SYMBOL}[${padded}] = {\n"
  "${bytes}\n};\n"
  "extern \"C\" const std::size_t ${SYMBOL}Size = ${size};\n")
file(RENAME "${OUTPUT}.tmp" "${OUTPUT}")
