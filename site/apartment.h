#pragma once

#include <cstdint>
#include <string>

#include "values/variant.h"

/// The web objects of the request that a thread serves. Each thread of the host is one apartment.
namespace pradelis::site {

/// Variables of the web application, the same for all requests.
struct ApplicationSettings {
  std::string connection_string;
  std::int16_t connection_timeout = 15;  ///< seconds
  std::int16_t command_timeout = 30;     ///< seconds
};

/// While it lives, the component's objects on this thread find the request's web objects: the
/// application variables, the session value "InformacoesUsuario", and a response that collects what
/// the component writes. One at a time on a thread.
class Apartment {
 public:
  explicit Apartment(const ApplicationSettings& settings);
  ~Apartment();
  Apartment(const Apartment&) = delete;
  Apartment& operator=(const Apartment&) = delete;

  void set_user_information(const Variant& information) { information_ = &information; }

  /// What the component has written into the page since last asked.
  std::string take_written();

  const ApplicationSettings& settings() const { return settings_; }
  Variant session_value(const std::string& name) const;
  void write(const std::string& html) { written_ += html; }

 private:
  const ApplicationSettings& settings_;
  const Variant* information_ = nullptr;
  std::string written_;
};

}  // namespace pradelis::site
