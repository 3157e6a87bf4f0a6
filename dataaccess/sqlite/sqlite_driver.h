#pragma once

#include <memory>

#include "dataaccess/driver.h"

/// The embedded database. Connection strings: "sqlite:PATH", with options after a "?":
///
/// | option | meaning |
/// |---|---|
/// | `create=1` | makes the file when it is missing, which is a failure otherwise |
/// | `synchronous=OFF`, `NORMAL`, `FULL`, `EXTRA` | when writes reach the disk; FULL when not given |
/// | `busy=N` | milliseconds to wait for another writer at most; the command's time when not given |
///
/// Dates stand in the file as texts that sort by time; text in `upper` and `lower` is mapped letter by
/// letter, accented ones too, also by the function `maiuscula`, on which an index can be made.
namespace pradelis::dataaccess::sqlite {

std::unique_ptr<Driver> new_driver();

}  // namespace pradelis::dataaccess::sqlite
