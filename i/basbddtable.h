/// @file
/// @brief BDD nodes, edges and the unique table in its two stores.
#pragma once

#include "basbdapi.h"
#include "ut_btr_tree.h"
#include "ut_hash.h"

/// @addtogroup bdds Binary decision diagrams
/// @{

class UT_STORE; // a host's own containers may share their first slots without sharing a base

/// @brief A BDD node; a `BDD_NODE*` in a signature is an edge.
///
/// An edge is a node's address whose bit 0 marks a complement: with the mark it stands for the
/// complement of the node's function. Edges are compared as whole values, and equal functions of
/// one manager have equal edges.
/// ```
///     edge         63 ............... 1   0
///                  [ address of a node ] [mark]
///     a AND b      node (0, high: node (1, 1, 0), low: 0)
/// ```
/// Every node in a unique table has an unmarked `high` that differs from `low`, and children of
/// larger variables; it never changes and lives as long as its table.
///
/// Complement an edge: flip bit 0 of the address; never that of a null. Evaluate one: follow `high`
/// or `low` by the value of `varid` down to the constant node, counting marks; an even number of
/// them is 1. A node takes 32 bytes of the heap.
class BASBD_API BDD_NODE {
public:
    unsigned short varid; ///< index of the node's variable; 0xFFFF marks the constant
    BDD_NODE* high;       ///< edge to the function for varid = 1
    BDD_NODE* low;        ///< edge to the function for varid = 0

    BDD_NODE();                                                           ///< Every field zero.
    explicit BDD_NODE(unsigned short id);                                 ///< Null edges.
    BDD_NODE(unsigned short id, BDD_NODE* high_edge, BDD_NODE* low_edge); ///< All as given.

    /// @brief Adds the variables of this node and of all nodes below it to a sorted list.
    ///
    /// Each index enters once. Visits every node once: O(n log v + v^2) for n nodes of v variables,
    /// each of which may move those already listed. Takes up to 56 bytes for a node; when memory
    /// ends, std::bad_alloc leaves some of the variables listed, in order.
    /// @param list  ascending indexes, then 0xFFFF in every free entry; holds all variables that
    ///              occur in it or here and one entry more. Call on a node, not on a marked edge.
    void adduniqueidx(unsigned short* list);

    /// @brief Writes the node as nested if-then-else, as in `a?b:0`, without a NUL.
    ///
    /// The text names a node anew on every path to it, so it can be exponentially longer than the
    /// BDD. Its length is the sum of three characters, `a?:`, and the lengths for both edges:
    /// ```
    ///     length of an edge = (1 if marked) + 1                     variable node (high 1, low 0)
    ///                         (1 if marked) + 5 + high + low        any other node
    ///                         1                                     constant
    /// ```
    /// with the lengths of the two edges for `high` and `low`. Counted once for every node, from
    /// the largest variable up, that is linear in the BDD; stop the sum before it overflows.
    ///
    /// Takes time linear in the text. A null edge writes nothing. Call on a node of a variable, not
    /// on a marked edge. When memory ends, std::bad_alloc leaves the beginning of the text.
    /// Reports 4:1, line 97 (high edge null) and line 117 (low edge null).
    /// @param out    room for the whole text
    /// @param names  a character for every variable index that occurs
    /// @return the position behind the last character
    char* printbddexpr(char* out, char* names);
};

/// How a unique table stores its nodes; any value but 0 selects the tree.
enum BDD_STORE_METHOD : int { BDD_STORE_HASH = 0, BDD_STORE_TREE = 1 };

/// @brief The hash-table store: an entry is a `BDD_NODE`, which is its own key.
class BASBD_API BDD_HASH : public UT_HASH {
public:
    BDD_HASH();           ///< An empty `UT_HASH(3089, 1)`.
    ~BDD_HASH() override; ///< Frees every node, unless `flag` has been set to 0.
    /// @brief `high` / 8 + 2 * `low` + `varid` of the edges' values, modulo 2^32.
    /// @param key  a BDD_NODE
    unsigned int hash_func(const void* key) override;
    /// @brief -1, 0 or 1 in the order of variable, high edge, low edge, as unsigned numbers.
    /// @param key    a BDD_NODE, of the store or not
    /// @param entry  a BDD_NODE, of the store or not
    int comp_func(const void* key, void* entry) override;
    /// @brief Frees one node.
    /// @param entry  a BDD_NODE from `new`, or null
    void del_func(void* entry) override;
};

/// @brief The balanced-tree store: an entry is a `BDD_NODE`, which is its own key.
class BASBD_API BDD_TREE : public UT_BTR_TREE {
public:
    BDD_TREE();           ///< An empty `UT_BTR_TREE(1)`.
    ~BDD_TREE() override; ///< Frees every node.
    /// @brief Frees one node.
    /// @param entry  a BDD_NODE from `new`, or null
    void del_func(void* entry) override;
    /// @brief -1, 0 or 1 in the order of variable, high edge, low edge, as unsigned numbers.
    /// @param key    a BDD_NODE, of the store or not
    /// @param entry  the address of a BDD_NODE, of the store or not
    int comp_func(void* key, const char* entry) override;
};

/// @brief The unique table: one node per (variable, high edge, low edge).
///
/// The owner destroys `store` before it frees the table; all nodes go with the store. The node of
/// variable i is that of (i, `basbdd_one`, `basbdd_zero`).
class BASBD_API BDD_TABLE {
public:
    UT_STORE* store;         ///< the container, destroyed by the table's owner
    BDD_STORE_METHOD method; ///< how the table was made

    explicit BDD_TABLE(BDD_STORE_METHOD store_method); ///< An empty table.
    BDD_TABLE(const BDD_TABLE&) = delete;
    BDD_TABLE& operator=(const BDD_TABLE&) = delete;

    /// @brief The one node of the triple, made if there is none yet.
    ///
    /// Stores what it is given: the caller keeps `high` unmarked and different from `low`. Takes
    /// constant time on average in the hash table, logarithmic time in the tree. The store is
    /// searched with a record that dies with the call; only one that is not found is made to stay.
    /// @param varid  below 0xFFFF
    /// @param high   edge to the function for `varid` = 1
    /// @param low    edge to the function for `varid` = 0
    /// @return an unmarked edge, never null, whose node belongs to the table; throws std::bad_alloc
    /// and then stores nothing
    BDD_NODE* findoradd(unsigned short varid, BDD_NODE* high, BDD_NODE* low);
};

/// @}
