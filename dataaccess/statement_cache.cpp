#include "dataaccess/statement_cache.h"

#include <iterator>

#include "dataaccess/dialect.h"

namespace pradelis::dataaccess {

namespace {
constexpr std::size_t most_statements = 200;
constexpr std::size_t most_text = std::size_t{1} << 19;  // bytes; long texts have many parameters
constexpr std::size_t longest_text = most_text / 4;      // a longer one will hardly come again
}  // namespace

StatementLease StatementCache::take(const StatementText& text) {
  const auto [first, last] = by_text_.equal_range(text);
  for (auto found = first; found != last; ++found) {
    const Entries::iterator entry = found->second;
    if (entry->in_use) continue;
    entry->in_use = true;
    if (entry != entries_.begin()) entries_.splice(entries_.begin(), entries_, entry);
    return {this, entry};
  }
  auto statement = connection_->prepare(in_dialect(text.text, connection_->dialect()));
  entries_.push_front({std::string(text.text), text.hash, std::move(statement)});
  by_text_.emplace(StatementText{entries_.front().text, text.hash}, entries_.begin());
  text_size_ += text.text.size();
  shrink();
  return {this, entries_.begin()};
}

void StatementCache::give_back(Entries::iterator entry) noexcept {
  entry->statement->reset();
  entry->in_use = false;
  if (entry->text.size() > longest_text) {
    drop(entry);
  } else if (text_size_ > most_text) {
    shrink();
  }
}

void StatementCache::shrink() noexcept {
  for (auto entry = entries_.end();
       entry != entries_.begin() && (entries_.size() > most_statements || text_size_ > most_text);) {
    --entry;
    if (!entry->in_use) drop(entry++);
  }
}

void StatementCache::drop(Entries::iterator entry) noexcept {
  const auto [first, last] = by_text_.equal_range(StatementText{entry->text, entry->hash});
  for (auto found = first; found != last; ++found) {
    if (found->second == entry) {
      by_text_.erase(found);
      break;
    }
  }
  text_size_ -= entry->text.size();
  entries_.erase(entry);
}

}  // namespace pradelis::dataaccess
