#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <string_view>
#include <tsl/robin_set.h>
#include <type_traits>

namespace base {

namespace detail {

/// The key of what a handle leads to; a text is its own key.
template <class KeyOf, class Handle> std::string_view KeyIn(const Handle& handle) {
    if constexpr (std::is_convertible_v<const Handle&, std::string_view>) {
        return handle;
    } else {
        return KeyOf()(handle);
    }
}

template <class KeyOf> struct KeyHash {
    template <class Handle> std::size_t operator()(const Handle& handle) const {
        return std::hash<std::string_view>()(KeyIn<KeyOf>(handle));
    }
};

template <class KeyOf> struct SameKey {
    using is_transparent = void;
    template <class First, class Second> bool operator()(const First& first, const Second& second) const {
        return KeyIn<KeyOf>(first) == KeyIn<KeyOf>(second);
    }
};

inline constexpr bool storeHash = true; // or a table that grows would read every key again

} // namespace detail

/// Handles (pointers, iterators) of things that hold their own keys, one handle a key, found by key in
/// constant time. The keys are compared exactly, and must not change while their handles are in the set.
/// `KeyOf()(handle)` is the key as a std::string_view.
template <class Handle, class KeyOf> using KeyedSet =
    tsl::robin_set<Handle, detail::KeyHash<KeyOf>, detail::SameKey<KeyOf>, std::allocator<Handle>,
                   detail::storeHash>;

} // namespace base
