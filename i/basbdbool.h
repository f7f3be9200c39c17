/// @file
/// @brief Expression trees of AND, XOR and OR nodes over the host's signals.
#pragma once

#include "basbdapi.h"

#include <cstddef>

/// @addtogroup trees Expression trees
/// @{

class BDD_MANAGER;
class BDD_NODE;
class UT_FASTMEM;

/// A signal of the host's netlist. The library compares addresses and never looks inside.
class TECHMAP_SIG;

/// @brief The name of a variable; a leaf named v has the op code v + 4. There is no "H".
///
/// The default texts are the letters of the enumerators.
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
///
///     AND        left: s          lcompl 0
///     |-- s      right: the OR    rcompl 1       stands for  s AND NOT (t OR 1)
///     `--~OR     left: t, right: constant 1
///
/// What a node stands for, where an operand enters complemented when its flag is 1:
///
/// | node                        | value                                             |
/// |-----------------------------|---------------------------------------------------|
/// | both operands               | left OP right                                     |
/// | left operand only           | that operand; the operator does not matter        |
/// | right operand only          | in simplification that operand, else constant 0   |
/// | operator without operands   | constant 0                                        |
/// | leaf                        | its signal, 1 or 0                                |
///
/// Every op code that is no leaf's counts as an operator; the operations that must know the
/// operator report any but AND, XOR and OR.
///
/// Trees may share subtrees. Walks take neither call stack nor memory, whatever the depth: on their
/// way down they lend out the nodes' own pointers, so nothing else may look at a tree during a
/// call. Memory besides nodes is taken by `subtreeforsig`, for a pointer to each copy until all are
/// made, by texts, by `treetobdd`, and by many waiting reports. An operation visits a node once for
/// every path that leads to it, unless it says otherwise. Its cost is linear in the visits.
///
/// Reports are internal errors "4:11" with the line given here. They go out once the operation is
/// done, in the order of the walk, so a message manager that receives one may look at any tree and
/// edit it; what it throws comes out of the operation. To keep them takes no memory as long as
/// their line changes a few times only. Beyond that, where the heap gives none, the others are
/// counted and follow at the end, line by line. Where an operation takes memory and that throws
/// `std::bad_alloc`, the tree has the shape that it had; its `usage` may be cleared.
class BASBD_API BOOL_TNODE {
public:
    signed char op;       ///< node kind, see BOOL_OP
    unsigned short usage; ///< scratch of the walks: a reference count or a visited mark
    unsigned char lcompl; ///< 1: the left operand enters complemented, else 0
    unsigned char rcompl; ///< 1: the right operand enters complemented, else 0
    BOOL_TNODE* left;     ///< left operand or null; in a signal leaf the signal, in a constant null
    BOOL_TNODE* right;    ///< right operand or null; null in a leaf

    static UT_FASTMEM* fstmem; ///< the pool that every node comes from; made at load, never freed

    /// @name Making and freeing nodes
    /// A node owns nothing: to delete it leaves its children alone. The constructors leave `usage`
    /// at 0 and keep bit 0 of a flag. A host that writes flags itself writes 0 or 1: walks that
    /// visit each node once mark it in bit 7 of `lcompl`, and pass over a node that has it set.
    /// @{
    BOOL_TNODE();                          ///< an operator, AND until the creator sets `op`
    explicit BOOL_TNODE(char op);          ///< an operator without children, or a constant
    BOOL_TNODE(char op, BOOL_TNODE* left); ///< an operator with a left operand
    BOOL_TNODE(char op, TECHMAP_SIG* sig); ///< a leaf of `sig`, not null: `op` 3, or 4 to 20 named
    BOOL_TNODE(char op, BOOL_TNODE* left, unsigned char lcompl, BOOL_TNODE* right,
               unsigned char rcompl); ///< an operator with both operands

    /// @brief A deep copy: `usage` and all, with a copy of a shared subtree for every path to it.
    /// Takes a node, then what is below its left and then its right child.
    /// @param src  null is reported (line 56) and gives an operator without children
    explicit BOOL_TNODE(BOOL_TNODE* src);
    BOOL_TNODE(const BOOL_TNODE&) = delete;
    BOOL_TNODE& operator=(const BOOL_TNODE&) = delete;

    static void* operator new(std::size_t size); ///< a block of the pool
    static void operator delete(void* block);    ///< returns one node's block to the pool
    static void* operator new[](std::size_t size) = delete; ///< the pool has single blocks only
    static void operator delete[](void* block) = delete;    ///< the pool has single blocks only

    /// @brief Clears `usage` in every node, leaves included.
    ///
    /// Visits each node once however many paths lead to it, and whatever `usage` held. With
    /// `markusage`, `reclaim` and the deletion of the root it frees a whole tree.
    void unmarknodes();
    /// Adds 1 to `usage` in every node for each path to it; wraps at 65,536.
    void markusage();
    /// @brief Takes 1 from `usage` in every node for each path, and deletes a child left with 0.
    ///
    /// Does not delete this node, and does not clear the pointers to what it deletes. `BOOL_FUNC`
    /// frees its tree in another way, which no number of paths can lead astray.
    void reclaim();
    /// @}

    /// @name Signals of a tree
    /// A leaf stands for `sig` whether it is named or not. Constants stand for no signal, so a null
    /// `sig` is found nowhere.
    /// @{

    /// @brief Adds a leaf for `sig` where the chain of right operands ends; `iscompl` not 0
    /// complements its edge.
    ///
    /// Fills a missing left, then a missing right operand. A leaf that is there already moves to
    /// the left of a new operator with this node's op code, its complement with it. Does nothing on
    /// a leaf. Linear in the length of the chain. `sig` is not null.
    void addsig(TECHMAP_SIG* sig, unsigned char iscompl);
    /// Whether a leaf stands for `sig`.
    bool issiginsuppt(TECHMAP_SIG* sig);
    /// @brief The flag of the edge into the leaf of `sig` that a search finds which looks at right
    /// operands first; false without one, and on a leaf. Flags further up do not count.
    bool issigcompl(TECHMAP_SIG* sig);
    /// Whether this node is a leaf named `v`; false for a `v` that is no name.
    bool isvarinleaf(BOOL_VARNAME v);
    /// Whether some leaf is named `v`; false for a `v` that is no name.
    bool isvarinsuppt(BOOL_VARNAME v);
    /// @brief Names leaves.
    /// @param sig  each of its leaves is named
    /// @param v  a value above 16 is reported for each such leaf (line 252), which stays as it is
    void setsigvname(TECHMAP_SIG* sig, BOOL_VARNAME v);
    /// The name of the first named leaf of `sig`, left before right; else `BOOL_VAR_NONE`.
    BOOL_VARNAME getsigvname(TECHMAP_SIG* sig);
    /// @brief Puts a deep copy of `sub` in the place of each leaf of `sig`, and toggles the edge's
    /// flag when `iscompl` is not 0.
    ///
    /// The copies are not searched; `sub` does not change, and where it is a part of this tree it
    /// is copied as it was. Visits each operator once and leaves `usage` 0 throughout. Reported on
    /// a leaf (line 323), which stays as it is. A null `sub` is reported for each copy (line 56).
    void subtreeforsig(TECHMAP_SIG* sig, BOOL_TNODE* sub, unsigned char iscompl);
    /// @brief Enters the tree's distinct signals as they are met.
    /// @param list  20 entries, filled from the front and null behind; more signals are left out
    void listsigs(TECHMAP_SIG** list);
    /// Makes constant 1 of every leaf of `sig`; edges keep their flags.
    void setsigto1(TECHMAP_SIG* sig);
    /// Makes constant 0 of every leaf of `sig`; edges keep their flags.
    void setsigto0(TECHMAP_SIG* sig);
    /// @brief Toggles the flag of every edge into a leaf of `sig`, once however it is reached.
    ///
    /// Call `unmarknodes` before: operators whose `usage` is not 0 are passed over, as a leaf is on
    /// which this is called. Reported on a leaf, and for each operator without left operand, which
    /// is passed over with what is below its right one (line 555); once for each, shared or not.
    void complsigintree(TECHMAP_SIG* sig);
    /// @brief Exchanges the names QX and QY, once in each leaf. Call `unmarknodes` before: nodes
    /// whose `usage` is not 0 are passed over.
    void exchangexy();
    /// Makes every leaf of `sig2` one of `sig1`, which is not null; names stay.
    void subsig1forsig2(TECHMAP_SIG* sig1, TECHMAP_SIG* sig2);
    /// @brief Deletes every leaf of `sig` and clears the pointers to it; nothing is simplified.
    /// Reported on a leaf (line 659), which stays as it is.
    void rmsigfromtree(TECHMAP_SIG* sig);
    /// The number of leaves, one for every path, modulo 2^32.
    unsigned int countleaves();
    /// @brief Detaches the first right operand that has `size` leaves, counted modulo 65,536.
    ///
    /// Follows right operands as long as there is a leaf on the left, and counts the leaves of what
    /// follows once. The flag of the detached edge stays behind.
    /// @return the operand, the caller's from then on; null when there is none
    BOOL_TNODE* getsubtreeofsize(unsigned short size);
    /// @}

    /// @name Simplification
    /// In place, so on trees that share no nodes. An operation that returns a node returns what
    /// stands for this one from then on; when that is another node, the caller deletes this one
    /// alone. A signal leaf so returned may carry a complement in its own `lcompl`: the caller
    /// clears it and toggles the flag of the edge into the leaf. While reports go out, and when one
    /// throws, this node has the returned one as its only operand, and a message manager leaves
    /// both alone.
    /// @{

    /// @brief Complements the node: AND and OR change places and toggle both flags, constants
    /// change places, anything else toggles `lcompl`.
    ///
    /// An operator without operands stands for 0 before and after. So does one whose only operand
    /// is on the right, but where simplification reads it. An unknown operator becomes another
    /// function, not always the complement.
    void complsubtree();
    /// @brief Removes constants, missing operands and operators of twice the same signal, children
    /// before parents.
    ///
    /// Reported on a leaf, which is returned (line 700); reports unknown operators as
    /// `trivialrchild`, `triviallchild` and `idempotency` do.
    BOOL_TNODE* reducetrivialsubtrees();
    /// @brief For an operator of two different nodes, the right one constant: returns the operand
    /// that remains, or a constant, complemented as its edge was, and frees the other.
    ///
    /// An unknown operator is reported (line 836) and returned with both operands; a constant whose
    /// edge is complemented has changed its value.
    BOOL_TNODE* trivialrchild();
    /// `trivialrchild` with the sides exchanged; line 902.
    BOOL_TNODE* triviallchild();
    /// @brief For an operator of two leaves of one signal, which may be the same node: returns a
    /// leaf, or this node as a constant, and frees what is left over.
    ///
    /// An unknown operator is reported (line 945), loses both leaves and is returned.
    BOOL_TNODE* idempotency();
    /// @brief Moves all complements to the edges into leaves, and complements the tree as well
    /// when `iscompl` is not 0.
    ///
    /// Reported on a leaf (line 1463), and for each complement that met an unknown operator (line
    /// 1482): that operator stays as it is and the complement is lost, which changes the value. An
    /// operator without operands loses complements too, for it stays 0.
    void pushbubblestoleaves(unsigned char iscompl);
    /// Whether every operator of the tree is `op`; true for a leaf.
    bool issubtreepure(char op);
    /// @}

    /// @brief Writes the tree as an equation: "*" AND, "@" XOR, "+" OR, "~" complement, no blanks.
    ///
    /// A right operand of the same operator goes without parentheses unless it is complemented. A
    /// leaf without a name (line 441) or text (line 436) is reported and written as nothing, as is
    /// an unknown operator without a report.
    ///
    /// The library keeps the capacity of one buffer for all calls of a thread. So before the first
    /// call for a new text, call `writeeqn()` on a function without a tree, which sets it to 256;
    /// its result is such a buffer. Between the calls for one text the thread may write no other.
    /// @param buf  start of a buffer from `new char[]` of the capacity kept; replaced by one of
    ///             twice the size as often as it must grow
    /// @param cur  where the text begins in it; moved behind the text, which is not terminated
    /// @return `cur`
    char* writesubtree(char*& buf, char*& cur);
    /// @brief The edge of this tree's function in a manager's BDD; see basbdd.h.
    ///
    /// A null `left` is the constant 0, a null `right` is left out. A signal without a variable
    /// (reported as 4:1 line 563) or an unknown operator with both operands (line 586) makes the
    /// result null. Each shared operator is converted once, but where its result is null once for
    /// every path, for its reports recur. Takes memory of its own and leaves the tree's pointers
    /// alone.
    /// @param mgr    not null; makes the nodes and owns them
    /// @param remap  null, or `mgr->nvars` entries: the variable to use for each variable of `mgr`;
    ///               one not below `nvars` is reported like a signal without a variable
    /// @return an edge of `mgr` or null, to which no complement applies
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
///
/// The function is the value of `root`, complemented when `rootcompl` is 1:
///
///     BOOL_FUNC f(BOOL_FUNC_AND, nullptr, BOOL_VAR_A);
///     f.addsigtofunc(s, 0);
///     f.addsigtofunc(t, 1);
///     f.setvarname(s, BOOL_VAR_A);
///     f.setvarname(t, BOOL_VAR_B);
///     std::unique_ptr<char[]> text(f.writeeqn());    // "A*~B"
///
/// A function without a tree is given one by `setfunctype`, `setlogic1`, `setlogic0` or
/// `buildcofactexpr`. Edits that need a tree report its absence (internal error "4:11" with the
/// line given here) and change nothing; other operations find nothing to do. Signals that enter a
/// tree are not null. When memory ends and `std::bad_alloc` comes out, the function is as it was
/// but for its nodes' `usage`. When a report throws, or `neoform` for one, the operation is done
/// (see `breakfunc` for the exception).
///
/// Different functions, each with its tree, may be used from different threads at once; one
/// function, or functions whose trees share nodes, from one thread at a time.
class BASBD_API BOOL_FUNC {
public:
    unsigned short nsuppt;   ///< number of distinct signals, as last counted or maintained
    unsigned char rootcompl; ///< 1: the function is the complement of its tree, else 0
    BOOL_TNODE* root;        ///< the tree, owned; null in a function that was given none

    /// @name Making
    /// The first constructor in the process that takes `names`, whatever the thread, fixes the
    /// texts of the variables for good: copies of `names[0]` to `names[last]`, `last` taken modulo
    /// 65,536 and 17 texts at most, or "A" to "G", "I" to "P", "QX" and "QY" when `names` is null.
    /// Texts that are written before use the latter and fix nothing.
    /// @{
    BOOL_FUNC();                                      ///< no tree
    BOOL_FUNC(char const** names, BOOL_VARNAME last); ///< no tree
    BOOL_FUNC(BOOL_FUNCTYPE type, char const** names,
              BOOL_VARNAME last); ///< an operator without operands, which stands for 0
    /// A deep copy, `usage` included. Null is reported (line 1025) and gives a function without a
    /// tree; a source without a tree is reported (line 56) and gives an operator without operands.
    explicit BOOL_FUNC(BOOL_FUNC* src);
    BOOL_FUNC(const BOOL_FUNC&) = delete;
    BOOL_FUNC& operator=(const BOOL_FUNC&) = delete;
    /// Frees each node of the tree once, however it is shared: at the last path to it, children
    /// before their parent.
    ~BOOL_FUNC();

    /// Sets the operator of the root and leaves its operands; makes a root where there is none.
    /// Does nothing to a root that is a leaf.
    void setfunctype(BOOL_FUNCTYPE type);
    /// @brief Adds a leaf as `BOOL_TNODE::addsig` does; counts a new signal. One walk.
    ///
    /// Reported without a tree (line 1138). Does nothing to a root that is a leaf.
    void addsigtofunc(TECHMAP_SIG* sig, unsigned char iscompl);
    void setlogic1(); ///< constant 1 instead of the tree, which is freed
    void setlogic0(); ///< constant 0 instead of the tree, which is freed
    /// (s AND a) OR (NOT s AND b) instead of the tree, which is freed; `nsuppt` is 3.
    void buildcofactexpr(TECHMAP_SIG* s, TECHMAP_SIG* a, TECHMAP_SIG* b);
    /// @}

    /// @name Questions
    /// @{
    bool islogic1(); ///< whether the tree is constant 1 after `cleanbufs`
    bool islogic0(); ///< whether the tree is constant 0 after `cleanbufs`
    /// The name of the first named leaf of `sig`, or `BOOL_VAR_NONE`; also after the report that
    /// there is no tree (line 1158).
    BOOL_VARNAME getvarname(TECHMAP_SIG* sig);
    /// @brief Number of distinct signals in the tree, at most 20; not stored.
    ///
    /// Linear in the number of paths to leaves, each compared with up to 20 signals found before.
    unsigned short countsuppt();
    /// @brief Number of distinct signals in this tree and that of `other`, which may be missing; at
    /// most 20, and 0 when this function has no tree. Costs as much as both `countsuppt`.
    unsigned short countsupptunion(BOOL_FUNC* other);
    /// @brief The operator of a function that uses a single one; 22 for any other function.
    ///
    /// Cleans the function and moves its complements, the root's too, to the edges into leaves.
    /// Linear and reported as `cleanbufs` and `BOOL_TNODE::pushbubblestoleaves`.
    /// @return 0, 1 or 2 as in `BOOL_FUNCTYPE`, or 22; the op code of an unknown operator as it is
    char getpurefunc();
    /// @}

    /// @name Edits by signal
    /// The lines named here report that there is no tree.
    /// @{
    void setvarname(TECHMAP_SIG* sig, BOOL_VARNAME v); ///< line 1149; see `setsigvname`
    void setsigto1(TECHMAP_SIG* sig); ///< fixes `sig` and counts the support; line 1301
    void setsigto0(TECHMAP_SIG* sig); ///< fixes `sig` and counts the support; line 1312
    /// NOT `sig` for `sig`; line 1323, and see `complsigintree`, which leaves 1 in `usage` of the
    /// operators that it comes to. Each node once. A root that is a leaf of `sig` toggles
    /// `rootcompl`.
    void complsiginfunc(TECHMAP_SIG* sig);
    /// Exchanges the names QX and QY; line 1341. Each node once; leaves 1 in every `usage`.
    void exchangexy();
    /// `sig1` in every leaf of `sig2`; the support is not counted. Line 1351.
    void subsig1forsig2(TECHMAP_SIG* sig1, TECHMAP_SIG* sig2);
    /// @brief Puts a copy of `fn`, complement and all, in the place of each leaf of `sig`; counts
    /// the support.
    ///
    /// Reported without a tree (line 1175) and when both have the same root (line 1178). A missing
    /// `fn`, or tree of it, is reported for each copy (line 56), an operator without operands.
    /// Leaves `usage` 0 throughout.
    void substfnforsig(TECHMAP_SIG* sig, BOOL_FUNC* fn);
    /// Drops the leaves of `sig` and cleans: operators lose the operand. A tree that is such a leaf
    /// becomes constant 0. Does not even clean when `sig` is null.
    void rmsigfromfunc(TECHMAP_SIG* sig);
    /// @}

    /// @brief Replaces the tree by an unshared copy, simplifies it and counts the support. A
    /// constant is left without `rootcompl`. Linear in the number of paths; reports unknown
    /// operators as `BOOL_TNODE::reducetrivialsubtrees` does.
    void cleanbufs();
    /// @brief Splits off a right operand with `size` leaves, see `BOOL_TNODE::getsubtreeofsize`,
    /// and cleans the rest. The operand keeps its nodes; those of the rest are new. When a report
    /// throws after an operand was found, the function is what it was before the call, whatever the
    /// manager did to it.
    /// @return the operand as a function of its own, the caller's to free with `delete`; null when
    ///         there is none, or when `nsuppt` is not above `size`, in which case nothing is
    ///         cleaned either
    BOOL_FUNC* breakfunc(unsigned short size);
    /// @brief The function as an equation, see `BOOL_TNODE::writesubtree`: "~(...)" with
    /// `rootcompl`, "1" for the complement of "0", "" without a tree.
    /// @return a terminated text, the caller's to free with `delete[]`. Linear in its length
    char* writeeqn();
    /// @brief Appends ":" and the text of every variable name in use, in the names' order; a mere
    /// ":" without a tree or support. A name without a text is left out.
    /// @param text  terminated, with room for what is appended
    void catvars(char* text);
};

/// @}
