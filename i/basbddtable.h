/// @file
/// @brief BDD nodes, edges and the unique table in its two stores.
#pragma once

#include "basbdapi.h"
#include "ut_btr_tree.h"
#include "ut_hash.h"

/// @brief A BDD node. A `BDD_NODE*` in a signature is an edge: a node's address whose bit 0 marks
/// a complement.
class BASBD_API BDD_NODE {
public:
    unsigned short varid; ///< index of the node's variable; 0xFFFF marks the constant
    BDD_NODE* high;       ///< edge to the function for varid = 1
    BDD_NODE* low;        ///< edge to the function for varid = 0

    BDD_NODE();
    explicit BDD_NODE(unsigned short id);
    BDD_NODE(unsigned short id, BDD_NODE* high_edge, BDD_NODE* low_edge);

    void adduniqueidx(unsigned short* list);
    char* printbddexpr(char* out, char* names);
};

/// How a unique table stores its nodes; any value but 0 selects the tree.
enum BDD_STORE_METHOD : int { BDD_STORE_HASH = 0, BDD_STORE_TREE = 1 };

/// @brief The hash-table store.
class BASBD_API BDD_HASH : public UT_HASH {
public:
    BDD_HASH();
    ~BDD_HASH() override;
    unsigned int hash_func(const void* key) override;
    int comp_func(const void* key, void* entry) override;
    void del_func(void* entry) override;
};

/// @brief The balanced-tree store.
class BASBD_API BDD_TREE : public UT_BTR_TREE {
public:
    BDD_TREE();
    ~BDD_TREE() override;
    void del_func(void* entry) override;
    int comp_func(void* key, const char* entry) override;
};

/// @brief The unique table: one node per (variable, high edge, low edge).
class BASBD_API BDD_TABLE {
public:
    UT_STORE* store;         ///< the container, destroyed by the table's owner
    BDD_STORE_METHOD method; ///< how the table was made

    explicit BDD_TABLE(BDD_STORE_METHOD method);
    BDD_TABLE(const BDD_TABLE&) = delete;
    BDD_TABLE& operator=(const BDD_TABLE&) = delete;
    BDD_NODE* findoradd(unsigned short varid, BDD_NODE* high, BDD_NODE* low);
};
