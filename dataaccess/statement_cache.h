#pragma once

#include <cstddef>
#include <list>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>

#include "dataaccess/driver.h"
#include "dataaccess/statement_shapes.h"

namespace pradelis::dataaccess {

class StatementCache;

/// A prepared statement in the hands of one user. Goes back to its cache, reset, when this ends.
class StatementLease {
 public:
  StatementLease() = default;
  StatementLease(StatementLease&& other) noexcept
      : cache_(std::exchange(other.cache_, nullptr)), entry_(other.entry_) {}
  StatementLease& operator=(StatementLease&& other) noexcept {
    if (this != &other) {
      give_back();
      cache_ = std::exchange(other.cache_, nullptr);
      entry_ = other.entry_;
    }
    return *this;
  }
  ~StatementLease() { give_back(); }

  explicit operator bool() const noexcept { return cache_ != nullptr; }
  DriverStatement* operator->() const noexcept;
  void give_back() noexcept;

 private:
  friend class StatementCache;
  struct Entry {
    std::string text;
    std::size_t hash = 0;
    std::unique_ptr<DriverStatement> statement;
    bool in_use = true;
  };
  using Entries = std::list<Entry>;

  StatementLease(StatementCache* cache, Entries::iterator entry) : cache_(cache), entry_(entry) {}

  StatementCache* cache_ = nullptr;
  Entries::iterator entry_;
};

/// The prepared statements of one connection by their text, the longest unused given up first. A
/// statement in use is not handed out again: the same text is then prepared a second time.
class StatementCache {
 public:
  explicit StatementCache(DriverConnection& connection) : connection_(&connection) {}
  StatementCache(const StatementCache&) = delete;
  StatementCache& operator=(const StatementCache&) = delete;

  /// The statement of this text, with "?" for its parameters, in the suite's dialect.
  StatementLease take(const StatementText& text);

  std::size_t size() const noexcept { return entries_.size(); }

 private:
  friend class StatementLease;
  using Entries = StatementLease::Entries;

  void give_back(Entries::iterator entry) noexcept;
  void drop(Entries::iterator entry) noexcept;
  void shrink() noexcept;

  DriverConnection* connection_;
  Entries entries_;  // the last used first
  std::unordered_multimap<StatementText, Entries::iterator, HashOfStatementText> by_text_;
  std::size_t text_size_ = 0;
};

inline DriverStatement* StatementLease::operator->() const noexcept { return entry_->statement.get(); }

inline void StatementLease::give_back() noexcept {
  if (cache_ != nullptr) std::exchange(cache_, nullptr)->give_back(entry_);
}

}  // namespace pradelis::dataaccess
