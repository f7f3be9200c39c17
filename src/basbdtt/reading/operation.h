/// @file
/// @brief The operators of an equation: their ranks and their algebra on words of entries.
#pragma once

#include <cstddef>
#include <cstdint>

namespace basbdtt {

constexpr std::uint64_t all_ones = ~std::uint64_t{0};

/// In the order of their ranks, the least binding first. All are associative and commutative.
enum class operation : std::uint8_t { disjunction, exclusive, conjunction };
constexpr std::size_t operations = 3;

/// Calls `work` with the operation as a function that joins its second argument to its first, so
/// that each gets code of its own.
template <typename work_type>
inline void with_operation(operation op, work_type work)
{
    switch (op) {
    case operation::disjunction:
        return work([](auto& a, const auto& b) { a |= b; });
    case operation::exclusive:
        return work([](auto& a, const auto& b) { a ^= b; });
    case operation::conjunction:
        return work([](auto& a, const auto& b) { a &= b; });
    }
}

/// Both operands' entries joined.
inline std::uint64_t apply(operation op, std::uint64_t a, std::uint64_t b)
{
    with_operation(op, [&](auto assign) { assign(a, b); });
    return a;
}

/// The constant that changes nothing.
constexpr std::uint64_t neutral(operation op)
{
    return op == operation::conjunction ? all_ones : 0;
}

/// The constant that decides an AND or OR alone, whatever the other operand.
constexpr std::uint64_t deciding(operation op)
{
    return op == operation::conjunction ? 0 : all_ones;
}

constexpr bool decides(operation op, std::uint64_t word)
{
    return op != operation::exclusive && word == deciding(op);
}

constexpr bool is_constant(std::uint64_t word) { return word == 0 || word == all_ones; }

} // namespace basbdtt
