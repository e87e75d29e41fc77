# Writes a C++ source that holds a file's bytes: cmake -DINPUT=file -DOUTPUT=source.cpp
# -DSYMBOL=name -P embed_bytes.cmake. The array is NAME and its length NAME + "Size".
file(READ "${INPUT}" hex HEX)
string(LENGTH "${hex}" digits)
math(EXPR size "${digits} / 2")
string(REGEX REPLACE "(..)" "0x\\1," bytes "${hex}")
string(REGEX REPLACE "((0x..,){24})" "\\1\n" bytes "${bytes}")
file(WRITE "${OUTPUT}.tmp" "// Made at build time from ${INPUT}; not to be edited.\n#include <cstddef>\n\n"
  "extern \"C\" const unsigned char ${SYMBOL}[] = {\n${bytes}\n};\n"
  "extern \"C\" const std::size_t ${SYMBOL}Size = ${size};\n")
file(RENAME "${OUTPUT}.tmp" "${OUTPUT}")
