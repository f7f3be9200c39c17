/// @file
/// @brief The BDD manager and BDD functions.
///
/// Different managers, each with its functions, may be used from different threads at once; one
/// manager and its functions from one thread at a time. Memory that runs out throws std::bad_alloc
/// and leaves managers and functions usable. Reports go to `ut_msgman` with the identifier 4:1 and
/// the line given.
///
/// A report may call the library: it may ask everything, and make functions and nodes in the
/// manager that it is about. It must not destroy that manager, nor change or destroy the tree and
/// the functions that the operation works with, for that goes on with them. A report that throws
/// leaves a function as it was, and of a text its beginning without a NUL. A container of the host
/// may call the library for other managers than its own.
#pragma once

#include "basbdapi.h"
#include "basbdbool.h"
#include "basbddtable.h"

/// @addtogroup bdds Binary decision diagrams
/// @{

/// The edge to the constant node without a mark: the function 1. Null until the first manager or
/// function is made, then the same for all managers and never freed.
extern BASBD_API BDD_NODE* basbdd_one;
/// The edge to the constant node with the complement mark: the function 0.
extern BASBD_API BDD_NODE* basbdd_zero;

/// @brief A set of BDD variables and the unique table in which all their nodes live.
///
/// Variable 0 is nearest the root; the order never changes. The manager keeps every node until it
/// is destroyed and no results of operations; what one call has solved it does not solve again, as
/// long as there is memory.
/// Operands are edges of this manager or the constants; the call stack does not grow with the
/// number of variables. The node of variable i is `table->findoradd(i, basbdd_one, basbdd_zero)`.
///
/// Beside the nodes that stay, a call takes some 20 kB in all, up to 72 bytes for every subproblem
/// that it solves and 40 for every level, in blocks of at most 16 MiB. Where it gets no memory for
/// what it has solved, it forgets the older half and may take longer; where a node gets none, it
/// gives that memory back first.
class BASBD_API BDD_MANAGER {
public:
    unsigned short nvars;  ///< number of variables
    TECHMAP_SIG** varsigs; ///< owned array: entry i is the signal of variable i
    BDD_TABLE* table;      ///< owned unique table

    /// @brief Makes a variable for every signal, in their order, and its node.
    /// @param method     the store of the unique table
    /// @param var_count  number of signals, up to 65,535
    /// @param sigs       `var_count` signals, copied; may be null when there are none
    BDD_MANAGER(BDD_STORE_METHOD method, unsigned short var_count, TECHMAP_SIG** sigs);
    BDD_MANAGER(const BDD_MANAGER&) = delete;
    BDD_MANAGER& operator=(const BDD_MANAGER&) = delete;
    ~BDD_MANAGER(); ///< Frees every node, in linear time; edges into this manager become invalid.

    /// @brief Makes the constant node; the first manager has done so already.
    /// Reports 4:1, line 375, when both constants are there, and keeps them.
    void mkconstants();

    /// @brief The edge of f AND g OR NOT f AND h.
    ///
    /// AND is (f, g, 0), OR is (f, 1, g), XOR is (f, NOT g, g). O(|f| |g| |h|) in the node counts.
    /// Method: Brace, Rudell, Bryant, "Efficient Implementation of a BDD Package".
    /// @param f  the condition, an edge of this manager or a constant, as are `g` and `h`
    /// @param g  the result where f is 1
    /// @param h  the result where f is 0
    /// @return the operand that a constant f chooses; else null when an operand is null, or when a
    ///         node of a variable that the manager does not have would be needed
    BDD_NODE* ifthenelse(BDD_NODE* f, BDD_NODE* g, BDD_NODE* h);

    /// @brief The edge of f with g in place of variable `var`.
    ///
    /// With the constants for g these are the cofactors, in O(|f|); else the work is that of one
    /// `ifthenelse` for every node of f down to the variable. An f that does not depend on the
    /// variable comes back unchanged.
    /// @param f    an edge of this manager or a constant, as is `g`
    /// @param var  any index; f never depends on one that is not below `nvars`
    /// @param g    the function to put in place
    /// @return null when f is null, or when g is and f depends on the variable; else as for
    ///         `ifthenelse`
    BDD_NODE* compose(BDD_NODE* f, unsigned short var, BDD_NODE* g);

    /// The first variable of a signal, compared by address, in O(nvars); 0xFFFF if it has none.
    unsigned short sig2varid(TECHMAP_SIG* sig);
};

/// @brief One Boolean function held as an edge into a manager, with its sorted support.
///
/// The function owns its support list only and must not outlive its manager. Print it with
/// `printbddexpr`, evaluate it by the recipe at BDD_NODE.
class BASBD_API BDD_FUNC {
public:
    unsigned short nsuppt; ///< number of variables in the support
    unsigned short nvars;  ///< capacity of the support list
    unsigned short* suppt; ///< owned array of nvars + 1 entries: the variables in ascending order,
                           ///< then 0xFFFF
    BDD_MANAGER* mgr;      ///< the manager of the nodes, not owned
    BDD_NODE* bdd;         ///< the function's edge, never null

    /// @brief Converts an expression tree.
    ///
    /// A tree that cannot be converted, or none, gives the constant 0 before the complement flag
    /// of `f` applies. Costs what the conversion costs, and `setbdd`.
    /// Reports 4:1, line 166 (`f` is null: the function is the constant 0), line 563 (a signal
    /// without a variable, or a remapped variable that the manager does not have; once for every
    /// path to the leaf) and line 586 (unknown operator).
    /// @param capacity  of the support list: normally the manager's number of variables; of a
    ///                  larger support only the uppermost variables are listed
    /// @param f         the tree function, not changed; null is reported
    /// @param manager   not null; not owned
    /// @param remap     null, or an entry for each variable of the manager: the one to take in its
    ///                  place
    BDD_FUNC(unsigned short capacity, BOOL_FUNC* f, BDD_MANAGER* manager, unsigned short* remap);

    /// @brief A copy with the same manager and edge and a support list of its own, in O(nvars).
    /// Reports 4:1, line 150 (`src` is null): the function is the constant 0 without a manager.
    /// @param src  not changed; null is reported
    explicit BDD_FUNC(BDD_FUNC* src);
    BDD_FUNC(const BDD_FUNC&) = delete;
    BDD_FUNC& operator=(const BDD_FUNC&) = delete;
    ~BDD_FUNC(); ///< Frees the support list.

    /// Makes `n` the function's edge and lists its support; null stands for the constant 0.
    /// Costs as much as `adduniqueidx`, and O(nvars). Memory that runs out leaves the function as
    /// it was, here and in the edits by signal.
    void setbdd(BDD_NODE* n);
    void initsupport(); ///< Sets all `nvars` + 1 entries of `suppt` to 0xFFFF.
    int countsuppt();   ///< The number of entries of `suppt` before the first 0xFFFF.

    /// @name Edits by signal
    /// Each looks the signal up, composes and calls `setbdd`. A signal that is no variable of the
    /// manager makes the function the constant 0.
    /// @{
    void setsigto1(TECHMAP_SIG* sig);    ///< Fixes the variable to 1.
    void setsigto0(TECHMAP_SIG* sig);    ///< Fixes the variable to 0.
    void complsiginfn(TECHMAP_SIG* sig); ///< Complements the variable.
    /// @brief Puts the function `fn`, which is not changed unless it is this one, in place of the
    /// variable.
    /// Reports 4:1, line 202 (`fn` has another manager) and line 205 (`fn` has another `nvars`),
    /// and goes on: nodes of another manager are made again in this one, by the numbers of their
    /// variables. A result that depends on a variable which this manager lacks is the constant 0.
    /// @param sig  the signal, compared by address
    /// @param fn   not null; may be this function
    void substfnforsig(TECHMAP_SIG* sig, BDD_FUNC* fn);
    /// @}

    /// @brief Writes the function as nested if-then-else: `1`, `~a`, `~(a?b:~b)`.
    ///
    /// Takes time linear in the text. When memory ends, std::bad_alloc leaves the beginning of the
    /// text without a NUL. Reports 4:1, line 241, when `bdd` is null, and writes the empty text.
    /// @param out    not null: room for the whole text, whose length BDD_NODE::printbddexpr gives,
    ///               and a NUL
    /// @param names  a character for every variable index that occurs
    void printbddexpr(char* out, char* names);
};

/// @}
