# Writes a C++ source that holds the site's templates and assets, so that the program runs from anywhere:
#   cmake -DOUTPUT=embedded.cpp -DSITE=dir -P embed.cmake
function(embed_folder function folder result)
  file(GLOB_RECURSE files ${SITE}/${folder}/*)
  list(SORT files)
  set(entries)
  foreach(file IN LISTS files)
    file(RELATIVE_PATH name ${SITE}/${folder} ${file})
    string(REPLACE ".mustache" "" name ${name})
    file(READ ${file} content HEX)
    string(REGEX REPLACE "(..)" "\\\\x\\1" content "${content}")
    file(SHA256 ${file} digest)
    string(SUBSTRING ${digest} 0 12 digest)
    string(APPEND entries "      {\"${name}\", \"${content}\"sv, \"${digest}\"},\n")
  endforeach()
  set(${result} "const std::vector<EmbeddedFile>& ${function}() {
  static const std::vector<EmbeddedFile> files = {\n${entries}  };
  return files;\n}\n" PARENT_SCOPE)
endfunction()

embed_folder(embedded_templates templates templates)
embed_folder(embedded_assets assets assets)
file(WRITE ${OUTPUT} "// Made by cmake/embed.cmake.
#include \"site/embedded.h\"\n
namespace pradelis::site {\n
using namespace std::string_view_literals;\n
${templates}\n${assets}\n}  // namespace pradelis::site\n")
