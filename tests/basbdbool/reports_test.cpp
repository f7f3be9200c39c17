/// Every report site, compared whole: each misuse is reported once and changes nothing.
#include "host_recorder.h"
#include "tree_oracle.h"
#include "ut_msgman.h"

#include <gtest/gtest.h>

#include <utility>

using tree_oracle::parse_shape;
using tree_oracle::parsed_func;
using tree_oracle::shape;

namespace {

TECHMAP_SIG* const a = tree_oracle::signal(0);

struct misuse {
    int line;
    const char* function;
    void (*run)(BOOL_FUNC& f);
};

void copy_no_tree(BOOL_FUNC& f)
{
    BOOL_FUNC copy;
    copy.root = new BOOL_TNODE(f.root);
    EXPECT_EQ(shape(copy), "*(-,-)");
}

void write(BOOL_FUNC& f) { EXPECT_STREQ(std::unique_ptr<char[]>(f.writeeqn()).get(), ""); }

void fold_same_signals(BOOL_FUNC& f)
{
    f.root->left = parse_shape("a");
    f.root->right = parse_shape("aA");
    EXPECT_EQ(f.root->idempotency(), f.root);
}

const misuse sites[] = {
    {56, "-", copy_no_tree},
    {252, "*(a,b)", [](auto& f) { f.root->setsigvname(a, BOOL_VAR_NONE); }},
    {323, "a", [](auto& f) { f.root->subtreeforsig(a, f.root, 0); }},
    {441, "a", write},
    {555, "a", [](auto& f) { f.root->complsigintree(a); }},
    {555, "*(-,a)", [](auto& f) { f.complsiginfunc(a); }},
    {659, "a", [](auto& f) { f.root->rmsigfromtree(a); }},
    {700, "a", [](auto& f) { EXPECT_EQ(f.root->reducetrivialsubtrees(), f.root); }},
    {836, "?(a,1)", [](auto& f) { EXPECT_EQ(f.root->trivialrchild(), f.root); }},
    {902, "?(1,a)", [](auto& f) { EXPECT_EQ(f.root->triviallchild(), f.root); }},
    {945, "?(-,-)", fold_same_signals},
    {1025, "-",
     [](auto&) { EXPECT_EQ(BOOL_FUNC(static_cast<BOOL_FUNC*>(nullptr)).root, nullptr); }},
    {1138, "-", [](auto& f) { f.addsigtofunc(a, 0); }},
    {1149, "-", [](auto& f) { f.setvarname(a, BOOL_VAR_A); }},
    {1158, "-", [](auto& f) { EXPECT_EQ(f.getvarname(a), BOOL_VAR_NONE); }},
    {1175, "-", [](auto& f) { f.substfnforsig(a, &f); }},
    {1178, "*(a,b)", [](auto& f) { f.substfnforsig(a, &f); }},
    {1301, "-", [](auto& f) { f.setsigto1(a); }},
    {1312, "-", [](auto& f) { f.setsigto0(a); }},
    {1323, "-", [](auto& f) { f.complsiginfunc(a); }},
    {1341, "-", [](auto& f) { f.exchangexy(); }},
    {1351, "-", [](auto& f) { f.subsig1forsig2(a, a); }},
    {1463, "a", [](auto& f) { f.root->pushbubblestoleaves(1); }},
    {1482, "?(a,b)", [](auto& f) { f.root->pushbubblestoleaves(1); }},
};

/// A function whose text is longer than a first buffer.
struct long_function : BOOL_FUNC {
    long_function() : BOOL_FUNC(BOOL_FUNC_XOR, nullptr, BOOL_VAR_A)
    {
        for (int i = 0; i < 300; ++i) {
            addsigtofunc(a, 0);
        }
        setvarname(a, BOOL_VAR_A);
    }
};

} // namespace

TEST(reports, each_site_whole)
{
    static char name[] = "mapper 0"; // outlives the test: the host may report later
    cae_appname = name;
    for (const misuse& site : sites) {
        SCOPED_TRACE(site.line);
        ++name[sizeof(name) - 2]; // the name counts at the time of the report
        parsed_func function(site.function);
        site.run(function);
        EXPECT_EQ(shape(function), site.function);
        EXPECT_EQ(function.nsuppt, parsed_func(site.function).nsuppt);
        const auto reports = host_recorder::take_reports();
        ASSERT_EQ(reports.size(), 1U);
        const auto& [text, app, id, line, rev, kind, extra] = reports[0];
        EXPECT_EQ(std::tie(text, app, id, rev),
                  std::make_tuple("", name, "4:11", "$Revision: 1.27 $"));
        EXPECT_EQ(std::tie(line, kind, extra), std::make_tuple(site.line, 2, nullptr));
    }
}

TEST(reports, what_needs_no_tree_is_silent)
{
    BOOL_FUNC f;
    f.rmsigfromfunc(a);
    f.cleanbufs();
    EXPECT_EQ(f.countsuppt() + f.countsupptunion(&f), 0);
    EXPECT_EQ(f.breakfunc(0), nullptr);
    EXPECT_EQ(f.getpurefunc(), 22);
    EXPECT_FALSE(f.islogic0() || f.islogic1());
    write(f);
    char names[8] = "F";
    f.catvars(names);
    EXPECT_STREQ(names, "F:");
    EXPECT_EQ(shape(f), "-");
    EXPECT_TRUE(host_recorder::take_reports().empty());
}

TEST(reports, find_whole_trees_and_a_host_that_writes_other_texts)
{
    long_function other;
    parsed_func function("*(?(a,1),~+(?(0,~b),?(cC,c)))");
    using texts_seen = std::vector<std::string>;
    texts_seen seen;
    host_recorder::on_report = [&](int line) {
        seen.push_back(std::to_string(line) + shape(function));
        delete[] other.writeeqn();
    };
    char* buffer = BOOL_FUNC().writeeqn();
    char* end = buffer;
    for (int i = 0; i < 60; ++i) {
        function.root->writesubtree(buffer, end);
        EXPECT_EQ(std::string(end - 15, end), "(1)*~((0~)+(C))");
        EXPECT_EQ(std::exchange(seen, {}), texts_seen(3, "441" + shape(function)));
    }
    delete[] buffer;
    function.cleanbufs();
    const std::string form = "*(?(a,1),~+(?(0,~b),?(-,-)))";
    EXPECT_EQ(seen, (texts_seen{"836" + form, "902" + form, "945" + form}));
    host_recorder::on_report = nullptr;
    host_recorder::take_reports();
}

TEST(reports, may_edit_the_function_and_throw)
{
    parsed_func substituted("+(a,+(b,@(c,d)))");
    host_recorder::on_report = [&](int /*line*/) {
        EXPECT_FALSE(substituted.islogic1());
        substituted.addsigtofunc(a, 1);
    };
    substituted.substfnforsig(tree_oracle::signal(1), nullptr);
    EXPECT_EQ(shape(substituted), "+(a,@(c,@(d,~a)))");

    BOOL_FUNC rootless;
    rootless.rootcompl = 1;
    host_recorder::on_report = [&](int /*line*/) { rootless.rootcompl = 0; };
    EXPECT_EQ(BOOL_FUNC(&rootless).rootcompl, 1);

    const std::string form = "~?(~1,*(b,~*(c,d)))";
    parsed_func broken(form.c_str());
    host_recorder::on_report = [&](int line) {
        EXPECT_EQ(shape(broken), "~?(~0,b)");
        broken.setlogic1();
        throw line;
    };
    EXPECT_THROW(broken.breakfunc(2), int);
    EXPECT_EQ(shape(broken) + std::to_string(broken.nsuppt), form + '3');

    const struct {
        const char* before;
        void (*edit)(BOOL_FUNC& f);
        const char* done;
    } rows[] = {
        {"~+(?(a,1),~+(b,c))", [](auto& f) { f.getpurefunc(); }, "*(?(a,1),+(b,c))"},
        {"*(?(a,1),0)", [](auto& f) { f.root->reducetrivialsubtrees(); }, "*(0,-)"},
        {"+(~a,*(0,?(b,1)))", [](auto& f) { f.root->reducetrivialsubtrees(); }, "+(~a,-)"},
    };
    for (const auto& row : rows) {
        parsed_func function(row.before);
        host_recorder::on_report = [&](int line) {
            EXPECT_EQ(shape(function), row.done);
            throw line;
        };
        EXPECT_THROW(row.edit(function), int);
        EXPECT_EQ(shape(function), row.done);
    }

    char* buffer = BOOL_FUNC().writeeqn(); // a new text begins like that
    char* end = buffer;
    parsed_func nameless("*(a,bB)");
    long_function other;
    host_recorder::on_report = [&](int line) {
        delete[] other.writeeqn(); // whose buffer is larger
        throw line;
    };
    EXPECT_THROW(nameless.root->writesubtree(buffer, end), int);
    EXPECT_EQ(std::string(buffer, end), "*B");
    host_recorder::on_report = nullptr;
    for (int i = 0; i < 300; ++i) {
        nameless.root->right->writesubtree(buffer, end);
    }
    host_recorder::on_report = [&](int /*line*/) { // goes on with this very text
        nameless.root->right->writesubtree(buffer, end);
    };
    for (int i = 0; i < 300; ++i) {
        nameless.root->writesubtree(buffer, end);
    }
    EXPECT_EQ(std::string(end - 6, end), "*BB*BB");
    host_recorder::on_report = [&](int /*line*/) { // takes most of it back
        end = buffer + 300;
        nameless.root->right->writesubtree(buffer, end);
    };
    for (int i = 0; i < 300; ++i) {
        nameless.root->writesubtree(buffer, end);
    }
    EXPECT_EQ(end - buffer, 301);
    host_recorder::on_report = nullptr;
    delete[] buffer;
    host_recorder::take_reports();
}
