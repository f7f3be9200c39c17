// Edits of trees and BDDs as the bytes tell, against columns computed by their definition.

#include "basbdtt.h"
#include "bdd_oracle.h"
#include "fuzz.h"
#include "quiet_host.h"

#include <array>
#include <iostream>
#include <iterator>
#include <memory>
#include <vector>

namespace {

using tree_oracle::signal;
using truth_column = std::uint64_t;

constexpr unsigned signals = 6;
constexpr unsigned most_leaves = 300;

/// @param value  of an assignment
template <class value_function>
truth_column column_where(value_function value)
{
    truth_column column = 0;
    for (unsigned x = 0; x < 64; ++x) {
        column |= truth_column{value(x) ? 1U : 0U} << x;
    }
    return column;
}

truth_column projection(unsigned input)
{
    return column_where([&](unsigned x) { return (x >> input & 1U) != 0; });
}

/// f with g in place of an input.
truth_column compose(truth_column f, unsigned input, truth_column g)
{
    return column_where([&](unsigned x) {
        const unsigned y = (x & ~(1U << input)) | static_cast<unsigned>(g >> x & 1U) << input;
        return (f >> y & 1U) != 0;
    });
}

truth_column column_of(const BOOL_FUNC& f)
{
    const std::vector<bool> values = tree_oracle::column(f, signals);
    return column_where([&](unsigned x) { return values[x]; });
}

truth_column column_of(const BDD_FUNC& f)
{
    return column_where([&](unsigned x) { return bdd_oracle::evaluate(f.bdd, x); });
}

std::array<TECHMAP_SIG*, signals> all_signals()
{
    return {signal(0), signal(1), signal(2), signal(3), signal(4), signal(5)};
}

/// The function's text read by the truth tables: the names A to F are the inputs 0 to 5.
truth_column column_of_text(const char* text)
{
    std::string equation;
    for (; *text != 0; ++text) {
        equation += *text >= 'A' && *text <= 'F' ? std::string{'B', static_cast<char>(*text - 17)}
                                                 : std::string(1, *text);
    }
    BOOL_TRUTH_TABLE table;
    table.set_value_from_internal_equation(signals, equation);
    check(quiet_host::take_statuses() == 0, "the text of a function can be read");
    return table.value.words[0] | truth_column{table.value.words[1]} << 32U;
}

/// A function in two representations and as its column.
struct function_pair {
    std::unique_ptr<BOOL_FUNC> tree;
    std::unique_ptr<BDD_FUNC> bdd;
    truth_column column = 0;
};

class editor {
public:
    editor(fuzz_input bytes, BDD_STORE_METHOD method)
        : input(bytes), manager(method, signals, all_signals().data())
    {
        for (function_pair& each : functions) {
            restart(each);
        }
    }

    void run()
    {
        for (int step = 0; step < 64 && !input.empty(); ++step) {
            const unsigned which = input.below(2);
            edit(functions[which], functions[1 - which]);
            check_agreement(functions[which]);
        }
    }

private:
    std::unique_ptr<BDD_FUNC> converted(BOOL_FUNC& tree)
    {
        return std::make_unique<BDD_FUNC>(signals, &tree, &manager, nullptr);
    }

    void restart(function_pair& f)
    {
        f.tree = std::make_unique<BOOL_FUNC>(static_cast<BOOL_FUNCTYPE>(input.below(3)), nullptr,
                                             BOOL_VAR_A);
        follow_tree(f);
    }

    void follow_tree(function_pair& f)
    {
        f.bdd = converted(*f.tree);
        f.column = column_of(*f.tree);
    }

    /// Edits whose value is defined change tree, BDD and column; the others change the tree alone.
    using edit_function = void (editor::*)(function_pair& f, function_pair& other, unsigned s);
    struct named_edit {
        const char* name;
        edit_function run;
    };

    void fix_to_1(function_pair& f, function_pair& /*other*/, unsigned s)
    {
        f.tree->setsigto1(signal(s));
        f.bdd->setsigto1(signal(s));
        f.column = compose(f.column, s, ~truth_column{0});
    }
    void fix_to_0(function_pair& f, function_pair& /*other*/, unsigned s)
    {
        f.tree->setsigto0(signal(s));
        f.bdd->setsigto0(signal(s));
        f.column = compose(f.column, s, 0);
    }
    void complement(function_pair& f, function_pair& /*other*/, unsigned s)
    {
        f.tree->complsiginfunc(signal(s));
        f.bdd->complsiginfn(signal(s));
        f.column = compose(f.column, s, ~projection(s));
    }
    void substitute(function_pair& f, function_pair& other, unsigned s)
    {
        if (f.tree->root->countleaves() * (other.tree->root->countleaves() + 1) <= most_leaves) {
            f.tree->substfnforsig(signal(s), other.tree.get());
            f.bdd->substfnforsig(signal(s), other.bdd.get());
            f.column = compose(f.column, s, other.column);
        }
    }
    void rename(function_pair& f, function_pair& /*other*/, unsigned s)
    {
        const unsigned t = input.below(signals);
        f.tree->subsig1forsig2(signal(t), signal(s));
        f.column = compose(f.column, s, projection(t));
        f.bdd = converted(*f.tree);
    }
    void clean(function_pair& f, function_pair& /*other*/, unsigned /*s*/)
    {
        f.tree->cleanbufs();
        check(f.tree->nsuppt == f.tree->countsuppt(), "the support as counted");
    }
    void ask_for_constants(function_pair& f, function_pair& /*other*/, unsigned /*s*/)
    {
        check(!f.tree->islogic1() || f.column == ~truth_column{0}, "a tree that is the constant 1");
        check(!f.tree->islogic0() || f.column == 0, "a tree that is the constant 0");
    }
    void push_complements(function_pair& f, function_pair& /*other*/, unsigned /*s*/)
    {
        f.tree->getpurefunc();
        f.tree->exchangexy();
    }
    void write(function_pair& f, function_pair& /*other*/, unsigned /*s*/) { check_text(f); }
    void copy(function_pair& f, function_pair& /*other*/, unsigned /*s*/)
    {
        f.tree = std::make_unique<BOOL_FUNC>(f.tree.get());
        f.bdd = std::make_unique<BDD_FUNC>(f.bdd.get());
    }
    void choose(function_pair& f, function_pair& /*other*/, unsigned s)
    {
        const unsigned a = input.below(signals);
        const unsigned b = input.below(signals);
        f.tree->buildcofactexpr(signal(s), signal(a), signal(b));
        follow_tree(f);
    }
    void remove(function_pair& f, function_pair& /*other*/, unsigned s)
    {
        f.tree->rmsigfromfunc(signal(s));
        follow_tree(f);
    }
    void break_off(function_pair& f, function_pair& /*other*/, unsigned /*s*/)
    {
        delete f.tree->breakfunc(static_cast<unsigned short>(input.below(8)));
        follow_tree(f);
    }
    void begin_anew(function_pair& f, function_pair& /*other*/, unsigned /*s*/) { restart(f); }
    void add_signals(function_pair& f, function_pair& /*other*/, unsigned /*s*/)
    {
        for (unsigned count = input.below(8); count > 0; --count) {
            TECHMAP_SIG* const sig = signal(input.below(signals));
            f.tree->addsigtofunc(sig, static_cast<unsigned char>(input.below(2)));
        }
        follow_tree(f);
    }

    static constexpr named_edit edits[] = {
        {"fix to 1", &editor::fix_to_1},
        {"fix to 0", &editor::fix_to_0},
        {"complement", &editor::complement},
        {"substitute", &editor::substitute},
        {"rename", &editor::rename},
        {"clean", &editor::clean},
        {"ask for constants", &editor::ask_for_constants},
        {"push complements", &editor::push_complements},
        {"write", &editor::write},
        {"copy", &editor::copy},
        {"choose", &editor::choose},
        {"remove", &editor::remove},
        {"break off", &editor::break_off},
        {"begin anew", &editor::begin_anew},
        {"add signals", &editor::add_signals},
    };

    void edit(function_pair& f, function_pair& other)
    {
        const unsigned s = input.below(signals);
        const named_edit& chosen = edits[input.below(std::size(edits))];
        last_edit = chosen.name;
        (this->*chosen.run)(f, other, s);
    }

    static void check_text(function_pair& f)
    {
        for (unsigned i = 0; i < signals; ++i) {
            f.tree->setvarname(signal(i), static_cast<BOOL_VARNAME>(i));
        }
        const std::unique_ptr<char[]> text(f.tree->writeeqn());
        check(column_of_text(text.get()) == f.column, "the text of a function");
    }

    void verify(bool holds, const char* what) const
    {
        if (!holds) {
            std::cerr << "after " << last_edit << ": ";
        }
        check(holds, what);
    }

    /// Equal functions are equal edges, and the support is what the column depends on.
    void check_agreement(function_pair& f)
    {
        verify(column_of(*f.tree) == f.column, "the tree's value");
        verify(column_of(*f.bdd) == f.column, "the BDD's value");
        verify(bdd_oracle::is_canonical(f.bdd->bdd), "the BDD's form");
        verify(converted(*f.tree)->bdd == f.bdd->bdd, "the BDD of the tree");
        unsigned count = 0;
        for (unsigned i = 0; i < signals; ++i) {
            if (compose(f.column, i, 0) != f.column) {
                verify(f.bdd->suppt[count++] == i, "the support");
            }
        }
        verify(f.bdd->nsuppt == count, "the number of variables in the support");
        std::array<char, 4096> text{};
        std::array<char, signals + 1> names{"abcdef"};
        f.bdd->printbddexpr(text.data(), names.data());
        if (f.tree->root->countleaves() > most_leaves) {
            restart(f);
        }
    }

    fuzz_input input;
    const char* last_edit = "the start";
    BDD_MANAGER manager;
    std::array<function_pair, 2> functions;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    for (const auto method : {BDD_STORE_HASH, BDD_STORE_TREE}) {
        editor({data, size}, method).run();
    }
    return 0;
}
