# Turns the viewer's script and style into a C++ source that defines two strings:
#   cmake -DSCRIPT=viewer.js -DSTYLE=viewer.css -DOUT=ViewerAssets.cpp -P EmbedViewerAssets.cmake
# Raw string literals keep the texts byte for byte; the delimiter occurs in neither file.
file(READ "${SCRIPT}" script)
file(READ "${STYLE}" style)
file(WRITE "${OUT}"
  "// Generated from ${SCRIPT} and ${STYLE}; edit those files instead.\n"
  "namespace qvviews {\n"
  "extern const char* const kViewerScript;\n"
  "extern const char* const kViewerStyle;\n"
  "const char* const kViewerScript = R\"qv_viewer(${script})qv_viewer\";\n"
  "const char* const kViewerStyle = R\"qv_viewer(${style})qv_viewer\";\n"
  "}\n")
