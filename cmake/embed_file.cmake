# Writes a file's bytes as a C++ array: cmake -DINPUT=... -DOUTPUT=... -DNAME=... -P embed_file.cmake
file(READ "${INPUT}" bytes HEX)
string(REGEX REPLACE "([0-9a-f][0-9a-f])" "0x\\1," bytes "${bytes}")
file(WRITE "${OUTPUT}" "// Made by the build from ${NAME}.\n#include <cstddef>\n\n"
     "extern const unsigned char ${NAME}[];\nextern const std::size_t ${NAME}Size;\n"
     "const unsigned char ${NAME}[] = {${bytes}};\nconst std::size_t ${NAME}Size = sizeof ${NAME};\n")
