# Turns a text file into a C++ source that defines one string with its content:
#   cmake -DIN=file -DOUT=file.cpp -P EmbedText.cmake
# A raw string literal keeps the text byte for byte; the delimiter cannot occur in a catalogue.
file(READ "${IN}" content)
file(WRITE "${OUT}"
  "// Generated from ${IN}; edit that file instead.\n"
  "namespace platform_messages {\n"
  "extern const char* const kCatalogueText;\n"
  "const char* const kCatalogueText = R\"qv_catalogue(${content})qv_catalogue\";\n"
  "}\n")
