/// @file
/// @brief Expression trees of AND, XOR and OR nodes over the host's signals.
#pragma once

#include "basbdapi.h"

#include <cstddef>

class BDD_MANAGER;
class BDD_NODE;
class UT_FASTMEM;

/// A signal of the host's netlist. The library compares addresses and never looks inside.
class TECHMAP_SIG;

/// The name of a variable; a leaf named v has the op code v + 4. There is no "H".
enum BOOL_VARNAME : int {
    BOOL_VAR_A = 0,
    BOOL_VAR_B = 1,
    BOOL_VAR_C = 2,
    BOOL_VAR_D = 3,
    BOOL_VAR_E = 4,
    BOOL_VAR_F = 5,
    BOOL_VAR_G = 6,
    BOOL_VAR_I = 7,
    BOOL_VAR_J = 8,
    BOOL_VAR_K = 9,
    BOOL_VAR_L = 10,
    BOOL_VAR_M = 11,
    BOOL_VAR_N = 12,
    BOOL_VAR_O = 13,
    BOOL_VAR_P = 14,
    BOOL_VAR_QX = 15,
    BOOL_VAR_QY = 16,
    BOOL_VAR_NONE = 17 ///< the answer when there is no name
};

/// The operator of a function that is built signal by signal; its value is the root's op code.
enum BOOL_FUNCTYPE : int { BOOL_FUNC_AND = 0, BOOL_FUNC_XOR = 1, BOOL_FUNC_OR = 2 };

/// Op codes of `BOOL_TNODE::op`. Codes 4 to 20 are signal leaves named `op` - 4.
enum BOOL_OP : signed char {
    BOOL_OP_AND = 0,
    BOOL_OP_XOR = 1,
    BOOL_OP_OR = 2,
    BOOL_OP_SIG = 3,
    BOOL_OP_FIRST_NAMED = 4,
    BOOL_OP_LAST_NAMED = 20,
    BOOL_OP_ONE = 21,
    BOOL_OP_ZERO = 22
};

/// @brief A node of an expression tree: an operator with up to two operands, or a leaf.
class BASBD_API BOOL_TNODE {
public:
    signed char op;       ///< node kind, see BOOL_OP
    unsigned short usage; ///< scratch of the walks: a reference count or a visited mark
    unsigned char lcompl; ///< 1: the left operand enters complemented
    unsigned char rcompl; ///< 1: the right operand enters complemented
    BOOL_TNODE* left;     ///< left operand; in a signal leaf the signal (see basbd_leaf_signal)
    BOOL_TNODE* right;    ///< right operand or null; null in a leaf

    static UT_FASTMEM* fstmem; ///< the pool that every node comes from

    BOOL_TNODE();
    explicit BOOL_TNODE(char op);
    BOOL_TNODE(char op, BOOL_TNODE* left);
    BOOL_TNODE(char op, TECHMAP_SIG* sig);
    BOOL_TNODE(char op, BOOL_TNODE* left, unsigned char lcompl, BOOL_TNODE* right,
               unsigned char rcompl);
    explicit BOOL_TNODE(BOOL_TNODE* src);
    BOOL_TNODE(const BOOL_TNODE&) = delete;
    BOOL_TNODE& operator=(const BOOL_TNODE&) = delete;

    static void* operator new(std::size_t size);
    static void operator delete(void* block);

    void unmarknodes();
    void markusage();
    void reclaim();

    void addsig(TECHMAP_SIG* sig, unsigned char iscompl);
    bool issiginsuppt(TECHMAP_SIG* sig);
    bool issigcompl(TECHMAP_SIG* sig);
    bool isvarinleaf(BOOL_VARNAME v);
    bool isvarinsuppt(BOOL_VARNAME v);
    void setsigvname(TECHMAP_SIG* sig, BOOL_VARNAME v);
    BOOL_VARNAME getsigvname(TECHMAP_SIG* sig);
    void subtreeforsig(TECHMAP_SIG* sig, BOOL_TNODE* sub, unsigned char iscompl);
    void listsigs(TECHMAP_SIG** list);
    void setsigto1(TECHMAP_SIG* sig);
    void setsigto0(TECHMAP_SIG* sig);
    void complsigintree(TECHMAP_SIG* sig);
    void exchangexy();
    void subsig1forsig2(TECHMAP_SIG* sig1, TECHMAP_SIG* sig2);
    void rmsigfromtree(TECHMAP_SIG* sig);
    unsigned int countleaves();
    BOOL_TNODE* getsubtreeofsize(unsigned short size);

    void complsubtree();
    BOOL_TNODE* reducetrivialsubtrees();
    BOOL_TNODE* trivialrchild();
    BOOL_TNODE* triviallchild();
    BOOL_TNODE* idempotency();
    void pushbubblestoleaves(unsigned char iscompl);
    bool issubtreepure(char op);

    char* writesubtree(char*& buf, char*& cur);
    BDD_NODE* treetobdd(BDD_MANAGER* mgr, unsigned short* remap);
};

/// @brief Whether `node` is a signal or a constant; every other op code is an operator.
inline bool basbd_is_leaf(const BOOL_TNODE& node)
{
    return static_cast<unsigned char>(node.op - BOOL_OP_SIG) < 20;
}

/// @brief The signal that a leaf stands for; null in a constant. Only for leaves.
inline TECHMAP_SIG* basbd_leaf_signal(const BOOL_TNODE& leaf)
{
    return reinterpret_cast<TECHMAP_SIG*>(leaf.left); // the record's one slot serves both kinds
}

/// @brief One logic function as an expression tree.
class BASBD_API BOOL_FUNC {
public:
    unsigned short nsuppt;   ///< number of distinct signals, as last counted; at most 20
    unsigned char rootcompl; ///< 1: the function is the complement of its tree
    BOOL_TNODE* root;        ///< the tree, owned; null in a function that was given none

    BOOL_FUNC();
    BOOL_FUNC(char const** names, BOOL_VARNAME last);
    BOOL_FUNC(BOOL_FUNCTYPE type, char const** names, BOOL_VARNAME last);
    explicit BOOL_FUNC(BOOL_FUNC* src);
    BOOL_FUNC(const BOOL_FUNC&) = delete;
    BOOL_FUNC& operator=(const BOOL_FUNC&) = delete;
    ~BOOL_FUNC();

    void setfunctype(BOOL_FUNCTYPE type);
    void addsigtofunc(TECHMAP_SIG* sig, unsigned char iscompl);
    void setlogic1();
    void setlogic0();
    void buildcofactexpr(TECHMAP_SIG* s, TECHMAP_SIG* a, TECHMAP_SIG* b);

    bool islogic1();
    bool islogic0();
    BOOL_VARNAME getvarname(TECHMAP_SIG* sig);
    unsigned short countsuppt();
    unsigned short countsupptunion(BOOL_FUNC* other);
    char getpurefunc();

    void setvarname(TECHMAP_SIG* sig, BOOL_VARNAME v);
    void setsigto1(TECHMAP_SIG* sig);
    void setsigto0(TECHMAP_SIG* sig);
    void complsiginfunc(TECHMAP_SIG* sig);
    void exchangexy();
    void subsig1forsig2(TECHMAP_SIG* sig1, TECHMAP_SIG* sig2);
    void substfnforsig(TECHMAP_SIG* sig, BOOL_FUNC* fn);
    void rmsigfromfunc(TECHMAP_SIG* sig);

    void cleanbufs();
    BOOL_FUNC* breakfunc(unsigned short size);
    char* writeeqn();
    void catvars(char* text);
};
