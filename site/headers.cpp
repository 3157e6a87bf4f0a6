#include "site/headers.h"

namespace pradelis::site {

void add_security_headers(Response& response, bool cacheable) {
  const auto add = [&](const char* name, const char* value) { response.headers.emplace_back(name, value); };
  add("Content-Security-Policy",
      "default-src 'none'; script-src 'self'; style-src 'self'; img-src 'self'; connect-src 'self'; "
      "form-action 'self'; base-uri 'none'; frame-ancestors 'none'");
  add("X-Content-Type-Options", "nosniff");
  add("X-Frame-Options", "DENY");
  add("Referrer-Policy", "same-origin");
  add("Cross-Origin-Opener-Policy", "same-origin");
  add("Cross-Origin-Resource-Policy", "same-origin");
  add("Permissions-Policy", "camera=(), microphone=(), geolocation=(), payment=()");
  add("Cache-Control", cacheable ? "public, max-age=31536000, immutable" : "no-store");
}

}  // namespace pradelis::site
