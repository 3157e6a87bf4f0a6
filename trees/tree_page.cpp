#include "trees/tree_page.h"

#include "component/thread_state.h"
#include "values/convert.h"

namespace pradelis::component {

NodeRows::NodeRows(const std::string& sql, Of of) : connection_(dataaccess::new_connection()) {
  connection_->set_ConnectionString(shared_conn().ConnectionString());
  connection_->set_Location(dataaccess::CursorLocation::Client);
  connection_->set_Mode(dataaccess::ConnectMode::Read);
  connection_->Open();
  if (of == Of::Root) hold_.emplace(connection_);
  rows_ = connection_->Execute(sql);
}

std::int32_t NodeRows::oid() { return to_int32(rows_->value(0)); }

std::string NodeRows::nome() { return to_text(rows_->value(1)); }

void NodeRows::close() {
  rows_->Close();
  hold_.reset();
  connection_->Close();
}

TreePage::TreePage() {
  GetApplication();
  GetResponse();
  response_ = thread_state().response;
  image_folder_ = concat(thread_state().application->Value("Link_local"), "/images/");
}

void TreePage::write_spacer(std::int16_t width) {
  write("<img src=\"", image_folder_, "1ptrans.gif\" width=\"", width, "\" height=1>");
}

void TreePage::write_expander(std::int16_t number) {
  write("<img src=\"", image_folder_, "mais.gif\" width=9 height=9 id=\"img", number,
        "\" onclick=\"tier1Menu(menu", number, ",img", number,
        ")\" class=\"tier1\" onmouseover=\"this.className='tier1over'\"  "
        "onmouseout=\"this.className='tier1'\" style=\"CURSOR: hand\">");
}

void TreePage::write_span_start(std::int16_t number) {
  write("<span ID=\"menu", number, "\" STYLE=\"DISPLAY: none\">\r\n");
}

}  // namespace pradelis::component
