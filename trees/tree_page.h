#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "component/web_objects.h"
#include "dataaccess/connection.h"
#include "dataaccess/read_hold.h"
#include "values/text.h"

namespace pradelis::component {

/// The entries below one node, read on a connection of their own that stays open until `close`.
class NodeRows {
 public:
  enum class Of : std::uint8_t {
    Root,  ///< of the whole tree: as long as they are open, those of all nodes share their read
    Node,
  };

  /// Runs a statement whose first two columns are the entries' identifiers and names.
  explicit NodeRows(const std::string& sql, Of of = Of::Node);

  bool at_end() { return rows_->Eof(); }
  std::int32_t oid();
  std::string nome();
  void next() { rows_->MoveNext(); }
  void close();

 private:
  dataaccess::ConnectionPtr connection_;
  std::optional<dataaccess::ReadHold> hold_;
  dataaccess::RecordsetPtr rows_;
};

/// The page into which a tree is written, and what both trees write alike.
class TreePage {
 public:
  /// Fetches the web application and the response of the thread.
  TreePage();

  /// Writes these parts as one piece.
  template <class... Parts>
  void write(const Parts&... parts) {
    response_->Write(concat(parts...));
  }
  /// The invisible image that indents an entry by `width` pixels.
  void write_spacer(std::int16_t width);
  /// The image that opens the span of node `number`.
  void write_expander(std::int16_t number);
  /// Opens the hidden span that holds what is below node `number`.
  void write_span_start(std::int16_t number);

 private:
  ResponsePtr response_;
  std::string image_folder_;
};

/// Pixels by which each level is indented more than the one above.
inline constexpr std::int16_t level_indent = 20;
/// Width of the expander, which entries without one have to make up for.
inline constexpr std::int16_t expander_width = 9;

}  // namespace pradelis::component
