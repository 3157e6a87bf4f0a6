#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "site/context.h"

/// Files attached to companies and deals. Whoever sees the record sees its files.
namespace pradelis::site {

struct StoredFile {
  std::int32_t id = 0;
  std::int32_t record = 0;  ///< the company or deal
  bool of_deal = false;
  std::string name;
};

/// A file that the visitor may see; refuses with 404 any other.
StoredFile read_file(Context& context, std::int32_t file);
/// Its bytes.
std::string read_content(Context& context, const StoredFile& file);

/// The files of a company or deal, newest first, for "_files". The caller has checked that the visitor may
/// see it.
std::vector<View> file_views(Context& context, std::int32_t record);

/// The name that a file is stored and given out under, of the one that a browser sent: without folders and
/// control characters, and at most 200 characters.
std::string safe_file_name(std::string_view sent);

}  // namespace pradelis::site
