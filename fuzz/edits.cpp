// Edits of trees and BDDs as the bytes tell, against columns computed by their definition.

#include "basbdtt.h"
#include "bdd_oracle.h"
#include "fuzz.h"
#include "quiet_host.h"

#include <array>
#include <memory>
#include <vector>

namespace {

using tree_oracle::signal;
using COLUMN = std::uint64_t;

constexpr unsigned signals = 6;
constexpr unsigned most_leaves = 300;

/// @param value  of an assignment
template <class VALUE>
COLUMN column_where(VALUE value)
{
    COLUMN column = 0;
    for (unsigned x = 0; x < 64; ++x) {
        column |= COLUMN{value(x) ? 1U : 0U} << x;
    }
    return column;
}

COLUMN projection(unsigned input)
{
    return column_where([&](unsigned x) { return (x >> input & 1U) != 0; });
}

/// f with g in place of an input.
COLUMN compose(COLUMN f, unsigned input, COLUMN g)
{
    return column_where([&](unsigned x) {
        const unsigned y = (x & ~(1U << input)) | static_cast<unsigned>(g >> x & 1U) << input;
        return (f >> y & 1U) != 0;
    });
}

COLUMN column_of(const BOOL_FUNC& f)
{
    const std::vector<bool> values = tree_oracle::column(f, signals);
    return column_where([&](unsigned x) { return values[x]; });
}

COLUMN column_of(const BDD_FUNC& f)
{
    return column_where([&](unsigned x) { return bdd_oracle::evaluate(f.bdd, x); });
}

std::array<TECHMAP_SIG*, signals> all_signals()
{
    return {signal(0), signal(1), signal(2), signal(3), signal(4), signal(5)};
}

/// The function's text read by the truth tables: the names A to F are the inputs 0 to 5.
COLUMN column_of_text(const char* text)
{
    std::string equation;
    for (; *text != 0; ++text) {
        equation += *text >= 'A' && *text <= 'F' ? std::string{'B', static_cast<char>(*text - 17)}
                                                 : std::string(1, *text);
    }
    BOOL_TRUTH_TABLE table;
    table.set_value_from_internal_equation(signals, equation);
    check(quiet_host::take_statuses() == 0, "the text of a function can be read");
    return table.value.words[0] | COLUMN{table.value.words[1]} << 32U;
}

/// A function in two representations and as its column.
struct FUNCTION {
    std::unique_ptr<BOOL_FUNC> tree;
    std::unique_ptr<BDD_FUNC> bdd;
    COLUMN column = 0;
};

class EDITOR {
public:
    EDITOR(FUZZ_INPUT input, BDD_STORE_METHOD method)
        : input_(input), manager_(method, signals, all_signals().data())
    {
        for (FUNCTION& each : functions_) {
            restart(each);
        }
    }

    void run()
    {
        for (int step = 0; step < 64 && !input_.empty(); ++step) {
            const unsigned which = input_.below(2);
            edit(functions_[which], functions_[1 - which]);
            check_agreement(functions_[which]);
        }
    }

private:
    std::unique_ptr<BDD_FUNC> converted(BOOL_FUNC& tree)
    {
        return std::make_unique<BDD_FUNC>(signals, &tree, &manager_, nullptr);
    }

    void restart(FUNCTION& f)
    {
        f.tree = std::make_unique<BOOL_FUNC>(static_cast<BOOL_FUNCTYPE>(input_.below(3)), nullptr,
                                             BOOL_VAR_A);
        follow_tree(f);
    }

    void follow_tree(FUNCTION& f)
    {
        f.bdd = converted(*f.tree);
        f.column = column_of(*f.tree);
    }

    /// Edits whose value is defined change tree, BDD and column; the others change the tree alone.
    void edit(FUNCTION& f, FUNCTION& other)
    {
        const unsigned s = input_.below(signals);
        TECHMAP_SIG* const sig = signal(s);
        BOOL_FUNC& tree = *f.tree;
        switch (input_.below(15)) {
        case 0:
            tree.setsigto1(sig);
            f.bdd->setsigto1(sig);
            f.column = compose(f.column, s, ~COLUMN{0});
            return;
        case 1:
            tree.setsigto0(sig);
            f.bdd->setsigto0(sig);
            f.column = compose(f.column, s, 0);
            return;
        case 2:
            tree.complsiginfunc(sig);
            f.bdd->complsiginfn(sig);
            f.column = compose(f.column, s, ~projection(s));
            return;
        case 3:
            if (tree.root->countleaves() * (other.tree->root->countleaves() + 1) <= most_leaves) {
                tree.substfnforsig(sig, other.tree.get());
                f.bdd->substfnforsig(sig, other.bdd.get());
                f.column = compose(f.column, s, other.column);
            }
            return;
        case 4: {
            const unsigned t = input_.below(signals);
            tree.subsig1forsig2(signal(t), sig);
            f.column = compose(f.column, s, projection(t));
            f.bdd = converted(tree);
            return;
        }
        case 5:
            tree.cleanbufs();
            check(tree.nsuppt == tree.countsuppt(), "the support as counted");
            return;
        case 6:
            check(!tree.islogic1() || f.column == ~COLUMN{0}, "a tree that is the constant 1");
            check(!tree.islogic0() || f.column == 0, "a tree that is the constant 0");
            return;
        case 7:
            tree.getpurefunc();
            tree.exchangexy();
            return;
        case 8:
            check_text(f);
            return;
        case 9:
            f.tree = std::make_unique<BOOL_FUNC>(&tree);
            f.bdd = std::make_unique<BDD_FUNC>(f.bdd.get());
            return;
        case 10:
            tree.buildcofactexpr(sig, signal(input_.below(signals)), signal(input_.below(signals)));
            break;
        case 11:
            tree.rmsigfromfunc(sig);
            break;
        case 12:
            delete tree.breakfunc(static_cast<unsigned short>(input_.below(8)));
            break;
        case 13:
            restart(f);
            return;
        default:
            for (unsigned count = input_.below(8); count > 0; --count) {
                tree.addsigtofunc(signal(input_.below(signals)),
                                  static_cast<unsigned char>(input_.below(2)));
            }
        }
        follow_tree(f);
    }

    static void check_text(FUNCTION& f)
    {
        for (unsigned i = 0; i < signals; ++i) {
            f.tree->setvarname(signal(i), static_cast<BOOL_VARNAME>(i));
        }
        const std::unique_ptr<char[]> text(f.tree->writeeqn());
        check(column_of_text(text.get()) == f.column, "the text of a function");
    }

    /// Equal functions are equal edges, and the support is what the column depends on.
    void check_agreement(FUNCTION& f)
    {
        check(column_of(*f.tree) == f.column, "the tree's value");
        check(column_of(*f.bdd) == f.column, "the BDD's value");
        check(bdd_oracle::is_canonical(f.bdd->bdd), "the BDD's form");
        check(converted(*f.tree)->bdd == f.bdd->bdd, "the BDD of the tree");
        unsigned count = 0;
        for (unsigned i = 0; i < signals; ++i) {
            if (compose(f.column, i, 0) != f.column) {
                check(f.bdd->suppt[count++] == i, "the support");
            }
        }
        check(f.bdd->nsuppt == count, "the number of variables in the support");
        std::array<char, 4096> text{};
        std::array<char, signals + 1> names{"abcdef"};
        f.bdd->printbddexpr(text.data(), names.data());
        if (f.tree->root->countleaves() > most_leaves) {
            restart(f);
        }
    }

    FUZZ_INPUT input_;
    BDD_MANAGER manager_;
    std::array<FUNCTION, 2> functions_;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    for (const auto method : {BDD_STORE_HASH, BDD_STORE_TREE}) {
        EDITOR({data, size}, method).run();
    }
    return 0;
}
