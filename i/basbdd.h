/// @file
/// @brief The BDD manager and BDD functions.
#pragma once

#include "basbdapi.h"
#include "basbdbool.h"
#include "basbddtable.h"

/// The edge to the constant node without a mark; null until the first manager is made.
extern BASBD_API BDD_NODE* basbdd_one;
/// The edge to the constant node with the complement mark; null until the first manager is made.
extern BASBD_API BDD_NODE* basbdd_zero;

/// @brief A set of BDD variables and the unique table in which all their nodes live.
class BASBD_API BDD_MANAGER {
public:
    unsigned short nvars;  ///< number of variables
    TECHMAP_SIG** varsigs; ///< owned array: entry i is the signal of variable i
    BDD_TABLE* table;      ///< owned unique table

    BDD_MANAGER(BDD_STORE_METHOD method, unsigned short nvars, TECHMAP_SIG** sigs);
    BDD_MANAGER(const BDD_MANAGER&) = delete;
    BDD_MANAGER& operator=(const BDD_MANAGER&) = delete;
    ~BDD_MANAGER();

    void mkconstants();
    BDD_NODE* ifthenelse(BDD_NODE* f, BDD_NODE* g, BDD_NODE* h);
    BDD_NODE* compose(BDD_NODE* f, unsigned short var, BDD_NODE* g);
    unsigned short sig2varid(TECHMAP_SIG* sig);
};

/// @brief One Boolean function held as an edge into a manager, with its sorted support.
class BASBD_API BDD_FUNC {
public:
    unsigned short nsuppt; ///< number of variables in the support
    unsigned short nvars;  ///< capacity of the support list
    unsigned short* suppt; ///< owned array of nvars + 1 entries, 0xFFFF behind the last variable
    BDD_MANAGER* mgr;      ///< the manager of the nodes, not owned
    BDD_NODE* bdd;         ///< the function's edge, never null

    BDD_FUNC(unsigned short nvars, BOOL_FUNC* f, BDD_MANAGER* mgr, unsigned short* remap);
    explicit BDD_FUNC(BDD_FUNC* src);
    BDD_FUNC(const BDD_FUNC&) = delete;
    BDD_FUNC& operator=(const BDD_FUNC&) = delete;
    ~BDD_FUNC();

    void setbdd(BDD_NODE* n);
    void initsupport();
    int countsuppt();
    void setsigto1(TECHMAP_SIG* sig);
    void setsigto0(TECHMAP_SIG* sig);
    void complsiginfn(TECHMAP_SIG* sig);
    void substfnforsig(TECHMAP_SIG* sig, BDD_FUNC* fn);
    void printbddexpr(char* out, char* names);
};
