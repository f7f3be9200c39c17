/// @file
/// @brief The internal-error reports of the expression trees.
#pragma once

#include <cstddef>
#include <memory>

/// Every report site. The value is the line that the report carries: a fixed number that tells
/// the site, whatever line the code stands in today.
// clang-format off: a table
enum class REPORT : int {
    // site                    line    operation                   condition
    COPY_OF_NULL_TREE = 56,       // BOOL_TNODE(BOOL_TNODE*)     src is null
    NAME_OUT_OF_RANGE = 252,      // setsigvname                 v above 16, for each leaf of sig
    SUBSTITUTE_IN_LEAF = 323,     // subtreeforsig               called on a leaf
    LEAF_WITHOUT_TEXT = 436,      // writesubtree                a named leaf without a text
    LEAF_WITHOUT_NAME = 441,      // writesubtree                an unnamed leaf
    COMPLEMENT_NO_LEFT = 555,     // complsigintree              on a leaf, or left is null
    REMOVE_FROM_LEAF = 659,       // rmsigfromtree               called on a leaf
    REDUCE_LEAF = 700,            // reducetrivialsubtrees       called on a leaf
    RIGHT_CONSTANT_OP = 836,      // trivialrchild               op not 0, 1 or 2
    LEFT_CONSTANT_OP = 902,       // triviallchild               op not 0, 1 or 2
    SAME_OPERANDS_OP = 945,       // idempotency                 op not 0, 1 or 2
    FUNC_COPY_OF_NULL = 1025,     // BOOL_FUNC(BOOL_FUNC*)       src is null
    ADD_WITHOUT_ROOT = 1138,      // addsigtofunc                root is null
    NAME_WITHOUT_ROOT = 1149,     // setvarname                  root is null
    GET_NAME_WITHOUT_ROOT = 1158, // getvarname                  root is null
    SUBSTITUTE_NO_ROOT = 1175,    // substfnforsig               root is null
    SUBSTITUTE_ITSELF = 1178,     // substfnforsig               fn's root is this one's
    SET_1_WITHOUT_ROOT = 1301,    // setsigto1                   root is null
    SET_0_WITHOUT_ROOT = 1312,    // setsigto0                   root is null
    COMPLEMENT_NO_ROOT = 1323,    // complsiginfunc              root is null
    EXCHANGE_WITHOUT_ROOT = 1341, // exchangexy                  root is null
    RENAME_WITHOUT_ROOT = 1351,   // subsig1forsig2              root is null
    PUSH_INTO_LEAF = 1463,        // pushbubblestoleaves         called on a leaf
    PUSH_THROUGH_OP = 1482,       // pushbubblestoleaves         complemented, op not 0, 1 or 2
};
// clang-format on

/// Tells the host's message manager; the reporting operation then goes on.
[[gnu::cold]] void report(REPORT site);

/// @brief Reports that wait until an operation is done, for a message manager may look at any tree
/// and may throw.
///
/// Equal ones in a row take one place. When the places are used up and the heap gives no more, the
/// others are counted by site and follow at the end: none is lost, and none makes an edit fail.
class LATER_REPORTS {
public:
    LATER_REPORTS() = default;
    LATER_REPORTS(const LATER_REPORTS&) = delete;
    LATER_REPORTS& operator=(const LATER_REPORTS&) = delete;

    [[gnu::cold]] void add(REPORT site, unsigned long count = 1) noexcept;

    /// Sends them in the order in which they came.
    void send() const
    {
        if (size != 0) {
            send_all();
        }
    }

private:
    struct RUN {
        REPORT site;
        unsigned long count;
    };
    static constexpr std::size_t first_capacity = 8;
    /// More than one operation has.
    static constexpr std::size_t most_sites = 4;

    RUN& run_of(REPORT site) noexcept;
    bool grow() noexcept;
    [[gnu::cold]] void send_all() const;

    RUN first[first_capacity];
    RUN counted[most_sites]; ///< what `runs` has no room for
    std::unique_ptr<RUN[]> more;
    RUN* runs = first;
    std::size_t size = 0;
    std::size_t capacity = first_capacity;
    std::size_t counted_sites = 0;
};
