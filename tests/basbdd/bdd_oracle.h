/// @file
/// @brief Plain recursive forms of the BDD operations, and managers that show what they store.
#pragma once

#include "basbdd.h"
#include "tree_oracle.h"

#include <array>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace bdd_oracle {

inline std::uintptr_t bits(const BDD_NODE* e) { return reinterpret_cast<std::uintptr_t>(e); }
inline bool is_marked(const BDD_NODE* e) { return (bits(e) & 1U) != 0; }
// NOLINTNEXTLINE(performance-no-int-to-ptr): the mark is a bit of the address
inline BDD_NODE* negate(BDD_NODE* e) { return reinterpret_cast<BDD_NODE*>(bits(e) ^ 1U); }
inline BDD_NODE* node(BDD_NODE* e) { return is_marked(e) ? negate(e) : e; }

/// The steps of the operations as they are written down, without a memo.
BDD_NODE* ifthenelse(BDD_MANAGER& m, BDD_NODE* f, BDD_NODE* g, BDD_NODE* h);
BDD_NODE* compose(BDD_MANAGER& m, BDD_NODE* f, unsigned short var, BDD_NODE* g);

/// @brief A store in front of another one, which numbers the nodes in the order they are added.
class NUMBERING_STORE final : public UT_STORE {
public:
    explicit NUMBERING_STORE(UT_STORE* store) : behind(store) {}
    void* s_add(const void* key, void* data) override;
    void* s_find(const void* key) override { return behind->s_find(key); }
    void* s_remove(const void* key) override { return behind->s_remove(key); }
    std::string name(BDD_NODE* e) const; ///< the edge by the number of its node

    std::vector<std::string> added; ///< variable, high and low edge of every node

private:
    std::unique_ptr<UT_STORE> behind;
    std::map<const BDD_NODE*, std::size_t> numbers;
};

/// @brief A manager over signals of its own.
class MANAGER {
    std::vector<TECHMAP_SIG> own;
    std::vector<TECHMAP_SIG*> addresses;

public:
    std::vector<TECHMAP_SIG*>& signals = addresses;
    BDD_MANAGER bdds;

    MANAGER(BDD_STORE_METHOD method, unsigned variables);
    BDD_NODE* variable(unsigned index);
    NUMBERING_STORE& number_nodes(); ///< call before the first operation
    /// The function of the first variables whose value for assignment i is entry i of `values`.
    BDD_NODE* function(unsigned variables, const std::vector<bool>& values);
};

/// The value for the assignment whose bit i is the value of variable i.
bool evaluate(BDD_NODE* e, unsigned assignment);
std::vector<bool> column(BDD_NODE* e, unsigned variables);
/// Assignments of `variables` variables with the value 1.
double count_models(BDD_NODE* e, unsigned variables);
/// Whether every node below is reduced, with an unmarked high edge and variables ascending.
bool is_canonical(BDD_NODE* e);

} // namespace bdd_oracle
