#pragma once

#include <cstddef>
#include <utility>

/// Elements by a number that is an int by nature, such as a PID, a sensor, a place among the
/// controls or a row of a view.
namespace dravik {

/// The element of that number, which must be there. The number may be an enumerator, too.
template <typename Container, typename Number>
auto& At(Container& container, Number number) {
    return container[static_cast<std::size_t>(number)];
}

/// The same; null when there is no element of that number.
template <typename Container>
auto* FindAt(Container& container, int number) {
    const bool there = number >= 0 && std::cmp_less(number, container.size());
    return there ? &At(container, number) : nullptr;
}

}  // namespace dravik
