/// @file
/// @brief Circuits over any BDD engine; each answers its outputs.
///
/// An engine has the type edge and the operations constant, variable, negate, conjunction,
/// disjunction, parity and choice.
#pragma once

#include <random>
#include <vector>

template <typename engine_type>
using edges = std::vector<typename engine_type::edge>;

/// N queens on an N x N board, row by row.
template <unsigned size>
struct queens {
    static constexpr unsigned variables = size * size;
    template <typename engine_type>
    static edges<engine_type> build(engine_type& e)
    {
        auto all = e.constant(true);
        for (unsigned row = 0; row < size; ++row) {
            auto one_in_row = e.constant(false);
            for (unsigned column = 0; column < size; ++column) {
                one_in_row = e.disjunction(one_in_row, e.variable(row * size + column));
            }
            all = e.conjunction(all, one_in_row);
        }
        for (unsigned a = 0; a < variables; ++a) {
            auto alone = e.constant(true);
            for (unsigned b = 0; b < variables; ++b) {
                const unsigned rows =
                    a / size > b / size ? a / size - b / size : b / size - a / size;
                const unsigned columns =
                    a % size > b % size ? a % size - b % size : b % size - a % size;
                if (a != b && (rows == 0 || columns == 0 || rows == columns)) {
                    alone = e.conjunction(alone, e.negate(e.variable(b)));
                }
            }
            all = e.conjunction(all, e.disjunction(e.negate(e.variable(a)), alone));
        }
        return {all};
    }
};

/// Adds `b` to `a` and answers the sum with the carry.
template <typename engine_type>
edges<engine_type> sum(engine_type& e, const edges<engine_type>& a, const edges<engine_type>& b)
{
    edges<engine_type> result;
    auto carry = e.constant(false);
    for (std::size_t i = 0; i < a.size(); ++i) {
        const auto half = e.parity(a[i], b[i]);
        result.push_back(e.parity(half, carry));
        carry = e.disjunction(e.conjunction(a[i], b[i]), e.conjunction(half, carry));
    }
    result.push_back(carry);
    return result;
}

struct adder16 {
    static constexpr unsigned variables = 32;
    template <typename engine_type>
    static edges<engine_type> build(engine_type& e)
    {
        edges<engine_type> a;
        edges<engine_type> b;
        for (unsigned i = 0; i < 16; ++i) {
            a.push_back(e.variable(2 * i));
            b.push_back(e.variable(2 * i + 1));
        }
        return sum(e, a, b);
    }
};

template <unsigned size>
struct multiplier {
    static constexpr unsigned variables = 2 * size;
    template <typename engine_type>
    static edges<engine_type> build(engine_type& e)
    {
        edges<engine_type> product;
        edges<engine_type> upper(size, e.constant(false));
        for (unsigned j = 0; j < size; ++j) {
            edges<engine_type> row;
            for (unsigned i = 0; i < size; ++i) {
                row.push_back(e.conjunction(e.variable(i), e.variable(size + j)));
            }
            upper = sum(e, upper, row);
            product.push_back(upper.front());
            upper.erase(upper.begin());
        }
        product.insert(product.end(), upper.begin(), upper.end());
        return product;
    }
};

/// result[k]: exactly k of the n variables are 1. Built from the last variable upwards.
template <typename engine_type>
edges<engine_type> counts(engine_type& e, unsigned n)
{
    edges<engine_type> exactly(n + 1, e.constant(false));
    exactly[0] = e.constant(true);
    for (unsigned i = n; i-- > 0;) {
        for (unsigned k = n - i + 1; k-- > 0;) {
            exactly[k] =
                e.choice(e.variable(i), k == 0 ? e.constant(false) : exactly[k - 1], exactly[k]);
        }
    }
    return exactly;
}

/// The disjunction of the functions, from the first one on.
template <typename engine_type>
typename engine_type::edge any_of(engine_type& e, const edges<engine_type>& functions)
{
    auto any = e.constant(false);
    for (const auto& f : functions) {
        any = e.disjunction(any, f);
    }
    return any;
}

struct symmetric20 {
    static constexpr unsigned variables = 20;
    template <typename engine_type>
    static edges<engine_type> build(engine_type& e)
    {
        const auto exactly = counts(e, variables);
        edges<engine_type> primes;
        for (const unsigned k : {2U, 3U, 5U, 7U, 11U, 13U, 17U, 19U}) {
            primes.push_back(exactly[k]);
        }
        return {any_of(e, primes)};
    }
};

/// The variable whose number is the count of ones; 0 when there is none.
struct hidden_weighted_bit16 {
    static constexpr unsigned variables = 16;
    template <typename engine_type>
    static edges<engine_type> build(engine_type& e)
    {
        const auto exactly = counts(e, variables);
        edges<engine_type> bits;
        for (unsigned k = 1; k <= variables; ++k) {
            bits.push_back(e.conjunction(exactly[k], e.variable(k - 1)));
        }
        return {any_of(e, bits)};
    }
};

/// Sums of random terms of three literals over 30 variables.
struct random_sums30 {
    static constexpr unsigned variables = 30;
    template <typename engine_type>
    static edges<engine_type> build(engine_type& e)
    {
        std::mt19937 random(30);
        edges<engine_type> sums;
        for (int s = 0; s < 4; ++s) {
            auto all = e.constant(false);
            for (int t = 0; t < 16; ++t) {
                auto term = e.constant(true);
                for (int l = 0; l < 3; ++l) {
                    const auto x = e.variable(static_cast<unsigned>(random() % variables));
                    term = e.conjunction(term, random() % 2 == 0 ? x : e.negate(x));
                }
                all = e.disjunction(all, term);
            }
            sums.push_back(all);
        }
        return sums;
    }
};
