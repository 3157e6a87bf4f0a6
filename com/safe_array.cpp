#include <cstddef>
#include <cstring>

#include "com/error_info.h"
#include "com/variant_in.h"
#include "com/variant_out.h"
#include "values/error.h"

namespace pradelis::com {
namespace {

void check(HRESULT code) {
  if (FAILED(code)) raise(number_of(code));
}

/// Keeps an array's elements where they are.
class Access {
 public:
  explicit Access(SAFEARRAY& array) : array_(array) { check(SafeArrayAccessData(&array, &data_)); }
  Access(const Access&) = delete;
  Access& operator=(const Access&) = delete;
  ~Access() { SafeArrayUnaccessData(&array_); }

  std::byte* data() const { return static_cast<std::byte*>(data_); }

 private:
  SAFEARRAY& array_;
  void* data_ = nullptr;
};

/// A new array that is destroyed unless it is handed over.
class NewArray {
 public:
  NewArray(VARTYPE type, UINT dimensions, SAFEARRAYBOUND* bounds)
      : array_(SafeArrayCreate(type, dimensions, bounds)) {
    if (!array_) raise(error_number::out_of_memory);
  }
  NewArray(const NewArray&) = delete;
  NewArray& operator=(const NewArray&) = delete;
  ~NewArray() {
    if (array_) SafeArrayDestroy(array_);
  }

  SAFEARRAY& get() const { return *array_; }
  SAFEARRAY* release() { return std::exchange(array_, nullptr); }

 private:
  SAFEARRAY* array_;
};

std::size_t length(SAFEARRAY& array, UINT dimension) {
  LONG lower = 0;
  LONG upper = 0;
  check(SafeArrayGetLBound(&array, dimension, &lower));
  check(SafeArrayGetUBound(&array, dimension, &upper));
  return static_cast<std::size_t>(static_cast<std::int64_t>(upper) - lower + 1);
}

VARTYPE element_type(SAFEARRAY& array) {
  VARTYPE type = VT_EMPTY;
  check(SafeArrayGetVartype(&array, &type));
  return type;
}

Variant bytes_of(SAFEARRAY& array) {
  const Access access(array);
  return Bytes(access.data(), access.data() + length(array, 1));
}

/// Reads an array index by index; the first one, whose neighbours lie side by side, outermost.
class ElementReader {
 public:
  explicit ElementReader(SAFEARRAY& array)
      : array_(array), access_(array), type_(element_type(array)), dimensions_(SafeArrayGetDim(&array)) {}

  Variant read() const { return read(1, access_.data(), SafeArrayGetElemsize(&array_)); }

 private:
  Variant read(UINT dimension, const std::byte* place, std::size_t stride) const {
    const std::size_t count = length(array_, dimension);
    Variant::Array elements;
    elements.reserve(count);
    for (std::size_t i = 0; i < count; ++i) {
      const std::byte* element = place + i * stride;
      elements.push_back(dimension == dimensions_ ? from_memory(type_, element)
                                                  : read(dimension + 1, element, stride * count));
    }
    return elements;
  }

  SAFEARRAY& array_;
  Access access_;
  VARTYPE type_;
  UINT dimensions_;
};

SAFEARRAYBOUND bound(std::size_t count) { return {static_cast<ULONG>(count), 0}; }

}  // namespace

Variant from_safe_array(SAFEARRAY* array) {
  if (!array) return Variant::Array();
  if (SafeArrayGetDim(array) == 1 && element_type(*array) == VT_UI1) return bytes_of(*array);
  return ElementReader(*array).read();
}

SAFEARRAY* new_byte_array(const Bytes& bytes) {
  SAFEARRAYBOUND bounds = bound(bytes.size());
  NewArray array(VT_UI1, 1, &bounds);
  if (!bytes.empty()) std::memcpy(Access(array.get()).data(), bytes.data(), bytes.size());
  return array.release();
}

SAFEARRAY* new_array(const Variant::Array& elements) {
  SAFEARRAYBOUND bounds = bound(elements.size());
  NewArray array(VT_VARIANT, 1, &bounds);
  {
    const Access access(array.get());
    auto* place = reinterpret_cast<VARIANT*>(access.data());
    for (const Variant& element : elements) to_variant(element, *place++);
  }
  return array.release();
}

SAFEARRAY* new_matrix(const Variant::Array& columns) {
  const std::size_t rows = columns.empty() ? 0 : columns.front().get<Variant::Array>().size();
  SAFEARRAYBOUND bounds[] = {bound(columns.size()), bound(rows)};
  NewArray array(VT_VARIANT, 2, bounds);
  {
    const Access access(array.get());
    auto* place = reinterpret_cast<VARIANT*>(access.data());
    for (std::size_t row = 0; row < rows; ++row) {
      for (const Variant& column : columns) to_variant(column.get<Variant::Array>().at(row), *place++);
    }
  }
  return array.release();
}

}  // namespace pradelis::com
