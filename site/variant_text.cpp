#include "site/variant_text.h"

#include <bit>
#include <charconv>
#include <cstring>
#include <span>

#include "values/hexadecimal.h"
#include "values/text.h"

// A letter for the type, then the content: numbers end with ";", contents of any length stand after
// their length and ":".
namespace pradelis::site {
namespace {

constexpr int deepest = 100;

void write_bits(std::string& text, char letter, double value) {
  text += concat(std::string_view(&letter, 1), std::bit_cast<std::int64_t>(value), ";");
}

void write_sized(std::string& text, char letter, std::string_view content) {
  text += concat(std::string_view(&letter, 1), static_cast<std::int64_t>(content.size()), ":", content);
}

/// Databases take neither a NUL in a text nor what is no UTF-8: such texts are kept as their bytes.
void write_text(std::string& text, const std::string& value) {
  if (value.find('\0') == std::string::npos && is_valid_utf8(value)) return write_sized(text, 't', value);
  write_sized(text, 'x', to_hexadecimal(std::as_bytes(std::span(value))));
}

void write(std::string& text, const Variant& value) {
  switch (value.type()) {
    case VariantType::Empty:
      text += 'E';
      return;
    case VariantType::Null:
      text += 'N';
      return;
    case VariantType::Missing:
      text += 'M';
      return;
    case VariantType::Boolean:
      text += value.get<bool>() ? 'V' : 'F';
      return;
    case VariantType::UInt8:
      text += concat("c", value.get<std::uint8_t>(), ";");
      return;
    case VariantType::Int16:
      text += concat("s", value.get<std::int16_t>(), ";");
      return;
    case VariantType::Int32:
      text += concat("i", value.get<std::int32_t>(), ";");
      return;
    case VariantType::Int64:
      text += concat("l", value.get<std::int64_t>(), ";");
      return;
    case VariantType::Double:
      return write_bits(text, 'r', value.get<double>());
    case VariantType::Date:
      return write_bits(text, 'd', value.get<Date>().serial);
    case VariantType::Text:
      return write_text(text, value.get<std::string>());
    case VariantType::Bytes:
      return write_sized(text, 'b', to_hexadecimal(value.get<Bytes>()));
    case VariantType::Array: {
      const auto& elements = value.get<Variant::Array>();
      text += concat("a", static_cast<std::int64_t>(elements.size()), ":");
      for (const Variant& element : elements) write(text, element);
      return;
    }
    case VariantType::Object:
      raise_type_mismatch();
  }
}

int digit_value(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  return c >= 'a' && c <= 'f' ? c - 'a' + 10 : -1;
}

/// Takes values off the beginning of a text. Whatever does not fit gives nothing.
class Reader {
 public:
  explicit Reader(std::string_view text) : rest_(text) {}

  bool at_end() const { return rest_.empty(); }

  std::optional<Variant> value(int depth = 0) {
    if (rest_.empty() || depth > deepest) return std::nullopt;
    const char letter = rest_.front();
    rest_.remove_prefix(1);
    switch (letter) {
      case 'E':
        return Variant();
      case 'N':
        return Variant::null();
      case 'M':
        return Variant::missing();
      case 'V':
        return Variant(true);
      case 'F':
        return Variant(false);
      case 'c':
        return number<std::uint8_t>();
      case 's':
        return number<std::int16_t>();
      case 'i':
        return number<std::int32_t>();
      case 'l':
        return number<std::int64_t>();
      case 'r':
        return real([](double value) { return Variant(value); });
      case 'd':
        return real([](double value) { return Variant(Date{value}); });
      case 't':
        return text();
      case 'x':
        return bytes([](const Bytes& value) {
          return Variant(std::string(reinterpret_cast<const char*>(value.data()), value.size()));
        });
      case 'b':
        return bytes([](Bytes value) { return Variant(std::move(value)); });
      case 'a':
        return array(depth);
      default:
        return std::nullopt;
    }
  }

 private:
  template <class Integer>
  std::optional<Integer> integer(char end) {
    Integer value = 0;
    const auto [stop, failure] = std::from_chars(rest_.data(), rest_.data() + rest_.size(), value);
    const auto length = static_cast<std::size_t>(stop - rest_.data());
    if (failure != std::errc() || length == rest_.size() || *stop != end) return std::nullopt;
    rest_.remove_prefix(length + 1);
    return value;
  }

  template <class Integer>
  std::optional<Variant> number() {
    const auto value = integer<Integer>(';');
    return value ? std::optional<Variant>(*value) : std::nullopt;
  }

  template <class Make>
  std::optional<Variant> real(Make make) {
    const auto bits = integer<std::int64_t>(';');
    return bits ? std::optional<Variant>(make(std::bit_cast<double>(*bits))) : std::nullopt;
  }

  std::optional<std::string_view> sized() {
    const auto size = integer<std::size_t>(':');
    if (!size || *size > rest_.size()) return std::nullopt;
    const std::string_view content = rest_.substr(0, *size);
    rest_.remove_prefix(*size);
    return content;
  }

  std::optional<Variant> text() {
    const auto content = sized();
    return content ? std::optional<Variant>(*content) : std::nullopt;
  }

  template <class Make>
  std::optional<Variant> bytes(Make make) {
    const auto content = sized();
    if (!content || content->size() % 2 != 0) return std::nullopt;
    Bytes bytes;
    bytes.reserve(content->size() / 2);
    for (std::size_t i = 0; i < content->size(); i += 2) {
      const int high = digit_value((*content)[i]);
      const int low = digit_value((*content)[i + 1]);
      if (high < 0 || low < 0) return std::nullopt;
      bytes.push_back(static_cast<std::byte>(high * 16 + low));
    }
    return make(std::move(bytes));
  }

  std::optional<Variant> array(int depth) {
    const auto count = integer<std::size_t>(':');
    if (!count || *count > rest_.size()) return std::nullopt;
    Variant::Array elements;
    elements.reserve(*count);
    for (std::size_t i = 0; i < *count; ++i) {
      auto element = value(depth + 1);
      if (!element) return std::nullopt;
      elements.push_back(std::move(*element));
    }
    return Variant(std::move(elements));
  }

  std::string_view rest_;
};

}  // namespace

std::string to_kept_text(const Variant& value) {
  std::string text;
  write(text, value);
  return text;
}

std::optional<Variant> from_kept_text(std::string_view text) {
  Reader reader(text);
  auto value = reader.value();
  return value && reader.at_end() ? std::move(value) : std::nullopt;
}

}  // namespace pradelis::site
