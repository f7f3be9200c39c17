/// @file
/// @brief The internal-error reports of the expression trees.
#pragma once

#include <cstddef>
#include <memory>

namespace basbdbool {

/// Every report site. The value is the line that the report carries: a fixed number that tells
/// the site, whatever line the code stands in today.
// clang-format off: a table
enum class report_site : int {
    // site                    line    operation                   condition
    copy_of_null_tree = 56,       // BOOL_TNODE(BOOL_TNODE*)     src is null
    name_out_of_range = 252,      // setsigvname                 v above 16, for each leaf of sig
    substitute_in_leaf = 323,     // subtreeforsig               called on a leaf
    leaf_without_text = 436,      // writesubtree                a named leaf without a text
    leaf_without_name = 441,      // writesubtree                an unnamed leaf
    complement_no_left = 555,     // complsigintree              on a leaf, or left is null
    remove_from_leaf = 659,       // rmsigfromtree               called on a leaf
    reduce_leaf = 700,            // reducetrivialsubtrees       called on a leaf
    right_constant_op = 836,      // trivialrchild               op not 0, 1 or 2
    left_constant_op = 902,       // triviallchild               op not 0, 1 or 2
    same_operands_op = 945,       // idempotency                 op not 0, 1 or 2
    func_copy_of_null = 1025,     // BOOL_FUNC(BOOL_FUNC*)       src is null
    add_without_root = 1138,      // addsigtofunc                root is null
    name_without_root = 1149,     // setvarname                  root is null
    get_name_without_root = 1158, // getvarname                  root is null
    substitute_no_root = 1175,    // substfnforsig               root is null
    substitute_itself = 1178,     // substfnforsig               fn's root is this one's
    set_1_without_root = 1301,    // setsigto1                   root is null
    set_0_without_root = 1312,    // setsigto0                   root is null
    complement_no_root = 1323,    // complsiginfunc              root is null
    exchange_without_root = 1341, // exchangexy                  root is null
    rename_without_root = 1351,   // subsig1forsig2              root is null
    push_into_leaf = 1463,        // pushbubblestoleaves         called on a leaf
    push_through_op = 1482,       // pushbubblestoleaves         complemented, op not 0, 1 or 2
};
// clang-format on

/// Tells the host's message manager; the reporting operation then goes on.
[[gnu::cold]] void report(report_site site);

/// @brief Reports that wait until an operation is done, for a message manager may look at any tree
/// and may throw.
///
/// Equal ones in a row take one place. When the places are used up and the heap gives no more, the
/// others are counted by site and follow at the end: none is lost, and none makes an edit fail.
class later_reports {
public:
    later_reports() = default;
    later_reports(const later_reports&) = delete;
    later_reports& operator=(const later_reports&) = delete;

    [[gnu::cold]] void add(report_site site, unsigned long count = 1) noexcept;

    /// Sends them in the order in which they came.
    void send() const
    {
        if (size != 0) {
            send_all();
        }
    }

private:
    struct run {
        report_site site;
        unsigned long count;
    };
    static constexpr std::size_t first_capacity = 8;
    /// As many as there are report sites.
    static constexpr std::size_t most_sites = 24;

    run& run_of(report_site site) noexcept;
    bool grow() noexcept;
    [[gnu::cold]] void send_all() const;

    run first[first_capacity];
    run counted[most_sites]; ///< what `runs` has no room for
    std::unique_ptr<run[]> more;
    run* runs = first;
    std::size_t size = 0;
    std::size_t capacity = first_capacity;
    std::size_t counted_sites = 0;
};

} // namespace basbdbool
