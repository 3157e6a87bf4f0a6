# Writes a C++ source that holds the site's templates and assets, so that the program runs from anywhere:
#   cmake -DOUTPUT=embedded.cpp -DSITE=dir -P embed.cmake
function(embed_folder function pattern result)
  file(GLOB files ${SITE}/${pattern})
  list(SORT files)
  set(entries)
  foreach(file IN LISTS files)
    get_filename_component(name ${file} NAME)
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

embed_folder(embedded_templates templates/*.mustache templates)
embed_folder(embedded_assets assets/* assets)
file(WRITE ${OUTPUT} "// Made by cmake/embed.cmake.
#include \"site/embedded.h\"\n
namespace pradelis::site {\n
using namespace std::string_view_literals;\n
${templates}\n${assets}\n}  // namespace pradelis::site\n")
