#include "bdd_oracle.h"
#include "host_recorder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <memory>

using bdd_oracle::support_of;
using tree_oracle::parsed_func;
using tree_oracle::signal;

namespace {

/// Variables 0 to 2 stand for the tree oracle's signals.
class func : public testing::Test {
protected:
    func()
    {
        host_recorder::on_report = [this](int line) {
            reported += ' ' + std::to_string(line);
            std::replace_copy(out, std::find(out, std::end(out), '#'), std::back_inserter(reported),
                              '\0', '.');
            BDD_FUNC(3, &conjunction, &manager, nullptr).complsiginfn(signals[0]);
        };
    }
    ~func() override
    {
        host_recorder::on_report = nullptr;
        host_recorder::take_reports();
    }

    std::string text_of(BDD_FUNC& function)
    {
        char names[] = "abc";
        function.printbddexpr(out, names);
        std::string text = out;
        std::fill(out, std::end(out), '#');
        return text;
    }

    /// Frees the function, after a look at its text and all reports since the last call: their
    /// lines, each with what stood in the buffer for the text.
    void expect(const char* text, const char* reports, BDD_FUNC* function)
    {
        const std::unique_ptr<BDD_FUNC> owner(function);
        EXPECT_EQ(text_of(*function), text);
        EXPECT_EQ(std::exchange(reported, ""), reports) << text;
    }

    BDD_FUNC* converted(const char* shape, unsigned short* remap = nullptr)
    {
        parsed_func tree(shape);
        return new BDD_FUNC(3, &tree, &manager, remap);
    }

    TECHMAP_SIG* signals[3] = {signal(0), signal(1), signal(2)};
    BDD_MANAGER manager{BDD_STORE_HASH, 3, signals};
    parsed_func conjunction{"*(a,b)"};
    BDD_FUNC f{3, &conjunction, &manager, nullptr};
    char out[256] = "#";
    std::string reported;
};

} // namespace

TEST_F(func, typical_request_runs_as_it_stands)
{
    for (const auto method : {BDD_STORE_HASH, BDD_STORE_TREE, BDD_STORE_METHOD(7)}) {
        BOOL_FUNC function(BOOL_FUNC_AND, nullptr, BOOL_VAR_A);
        function.addsigtofunc(signals[0], 0);
        function.addsigtofunc(signals[1], 0);
        function.setvarname(signals[0], BOOL_VAR_A);
        function.setvarname(signals[1], BOOL_VAR_B);
        EXPECT_EQ(function.nsuppt, 2);
        const std::unique_ptr<char[]> equation(function.writeeqn());
        EXPECT_STREQ(equation.get(), "A*B");
        BDD_MANAGER two(method, 2, signals);
        BDD_FUNC bdd(2, &function, &two, nullptr);
        EXPECT_EQ(support_of(bdd), (std::vector<unsigned short>{0, 1, 0xFFFF}));
        EXPECT_EQ(text_of(bdd), "(a?b:0)");
        bdd.setsigto1(signals[1]);
        EXPECT_EQ(bdd.bdd, two.table->findoradd(0, basbdd_one, basbdd_zero));
        EXPECT_EQ(text_of(bdd), "a");
    }
}

TEST_F(func, texts_and_reports)
{
    const struct {
        const char* tree;
        const char* text;
        const char* reports = "";
    } cases[] = {
        {"1", "1"},
        {"~1", "0"},
        {"*(a,b)", "(a?b:0)"},
        {"+(a,b)", "(a?1:b)"},
        {"*(a,~b)", "~(a?b:1)"},
        {"@(a,c)", "~(a?c:~c)"},
        {"*(-,a)", "0"},
        {"?(~a,-)", "~a"},
        {"-", "0"},
        {"~-", "1"},
        {"j", "0", " 563"},
        {"*(?(a,b),j)", "0", " 586 563"}, // left is converted before right
    };
    for (const auto& [tree, text, reports] : cases) {
        expect(text, reports, converted(tree));
    }
    unsigned short exchange[] = {1, 0, 2};
    expect("~(a?1:~b)", "", converted("*(a,~b)", exchange));
    char names[] = "ab";
    EXPECT_EQ(std::string(out, f.bdd->printbddexpr(out, names)), "a?b:0");
}

TEST_F(func, copies_the_support_and_adds_to_a_list)
{
    BDD_FUNC copy(&f);
    EXPECT_EQ(support_of(copy), support_of(f));
    EXPECT_EQ(copy.nsuppt + copy.countsuppt(), 4);
    copy.setbdd(nullptr);
    EXPECT_EQ(text_of(copy), "0");
    EXPECT_EQ(text_of(f), "(a?b:0)");
    std::vector<unsigned short> list{1, 5, 0xFFFF, 0xFFFF, 0xFFFF};
    f.bdd->adduniqueidx(list.data());
    EXPECT_EQ(list, (std::vector<unsigned short>{0, 1, 5, 0xFFFF, 0xFFFF}));
    parsed_func choice("+(*(a,c),*(~a,b))");
    EXPECT_EQ(support_of(BDD_FUNC(2, &choice, &manager, nullptr)),
              (std::vector<unsigned short>{0, 1, 0xFFFF}))
        << "the uppermost of three";
}

TEST_F(func, reports_each_misuse_once)
{
    parsed_func shared(
        "~?(~*(a,j),@(b,-))"); // one unknown signal on two paths, below a good subtree
    shared.root->right->right = shared.root->left;
    unsigned short beyond[] = {0, 3, 2};
    expect("0", " 150", new BDD_FUNC(nullptr));
    expect("0", " 166", new BDD_FUNC(3, nullptr, &manager, nullptr));
    expect("1", " 563 563 586", new BDD_FUNC(3, &shared, &manager, nullptr));
    expect("0", " 563", converted("*(a,b)", beyond));

    auto* edited = new BDD_FUNC(nullptr);
    edited->setsigto1(signals[0]);
    expect("0", " 150", edited);
    BDD_NODE childless(0);
    edited = new BDD_FUNC(&f);
    edited->bdd = &childless;
    expect("(a?:)", " 97(a? 117(a?", edited);
    edited = new BDD_FUNC(&f);
    edited->bdd = nullptr;
    expect("", " 241.", edited);

    const auto report = host_recorder::take_reports().at(0);
    EXPECT_EQ(report.text + report.app + " " + report.id + " " + report.rev,
              "basbd 4:1 $Revision: 1.5 $");
    EXPECT_EQ(std::make_tuple(report.line, report.kind, report.extra),
              std::make_tuple(150, 2, nullptr));
}

TEST_F(func, takes_the_function_of_another_manager_in_nodes_of_its_own)
{
    parsed_func tree("*(b,c)");
    const BDD_FUNC own(3, &tree, &manager, nullptr);
    BDD_MANAGER other(BDD_STORE_TREE, 3, signals);
    BDD_FUNC foreign(1, &tree, &other, nullptr);
    for (const char* const shape : {"a", "*(a,b)", "+(*(a,b),*(a,c))"}) {
        BDD_FUNC* const edited = converted(shape);
        edited->substfnforsig(signals[0], &foreign);
        EXPECT_EQ(edited->bdd, own.bdd) << shape;
        expect("(b?c:0)", " 202 205", edited);
    }
}
