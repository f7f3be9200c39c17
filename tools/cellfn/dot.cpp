#include "dot.h"

#include "basbdcells/text.h"
#include "forms.h"

#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace cellfn {

namespace {

/// What all graphs look like, in front of what is particular to one.
constexpr const char* style =
    "  node [fontname=\"Helvetica\", shape=circle, width=0.45, margin=0.02];\n"
    "  edge [fontname=\"Helvetica\", fontsize=11, arrowsize=0.7];\n"
    "  edge [labelangle=25, labeldistance=1.5];\n"
    "  f [shape=plaintext];\n";

std::string edge_line(const std::string& from, const std::string& to, bool complemented,
                      const std::string& label)
{
    std::string attributes = label.empty() ? "" : "taillabel=\"" + label + '"';
    if (complemented) {
        attributes += (label.empty() ? "" : ", ") + std::string("style=dashed, arrowhead=dot");
    }
    return "  " + from + " -> " + to + (attributes.empty() ? "" : " [" + attributes + "]") + ";\n";
}

std::string node(const std::string& name, const std::string& label, const char* shape = "")
{
    std::string escaped;
    for (const char c : basbdcells::printable(label)) {
        escaped += (c == '"' || c == '\\' ? "\\" : "") + std::string(1, c);
    }
    return name + " [label=\"" + escaped + '"' + shape + "];";
}

constexpr const char* square = ", shape=square";

std::string label_of(const BOOL_TNODE& node)
{
    switch (node.op) {
    case BOOL_OP_AND:
        return "AND";
    case BOOL_OP_XOR:
        return "XOR";
    case BOOL_OP_OR:
        return "OR";
    case BOOL_OP_ONE:
        return "1";
    case BOOL_OP_ZERO:
        return "0";
    default:
        return basbd_leaf_signal(node)->name;
    }
}

} // namespace

void write_bdd_graph(std::ostream& out, const BDD_FUNC& function)
{
    const std::vector<const BDD_NODE*> nodes = nodes_below(function.bdd);
    std::unordered_map<const BDD_NODE*, std::string> names;
    for (const BDD_NODE* each : nodes) {
        names.emplace(each, "n" + std::to_string(names.size()));
    }
    const auto link = [&](const std::string& from, const BDD_NODE* edge, const std::string& label) {
        const edge_parts to(edge);
        const std::string name = to.is_constant() ? "one" : names.at(to.node);
        out << edge_line(from, name, to.complemented, label);
    };
    out << "digraph bdd {\n" << style;
    for (std::size_t i = 0; i < nodes.size();) {
        const unsigned short level = nodes[i]->varid;
        out << "  { rank=same;";
        for (; i < nodes.size() && nodes[i]->varid == level; ++i) {
            out << ' ' << node(names.at(nodes[i]), function.mgr->varsigs[level]->name);
        }
        out << " }\n";
    }
    out << "  { rank=sink; " << node("one", "1", square) << " }\n";
    link("f", function.bdd, "");
    for (const BDD_NODE* each : nodes) {
        link(names.at(each), each->high, "1");
        link(names.at(each), each->low, "0");
    }
    out << "}\n";
}

void write_tree_graph(std::ostream& out, const BOOL_FUNC& function)
{
    struct pending {
        std::string from;
        const BOOL_TNODE* node;
        bool complemented;
    };
    out << "digraph tree {\n" << style;
    std::vector<pending> stack{{"f", function.root, function.rootcompl != 0}};
    for (std::size_t number = 0; !stack.empty(); ++number) {
        const pending next = std::move(stack.back());
        stack.pop_back();
        const std::string name = "n" + std::to_string(number);
        const bool is_leaf = basbd_is_leaf(*next.node);
        out << "  " << node(name, label_of(*next.node), is_leaf ? square : "") << '\n'
            << edge_line(next.from, name, next.complemented, "");
        if (is_leaf) {
            continue;
        }
        if (next.node->right != nullptr) {
            stack.push_back({name, next.node->right, next.node->rcompl != 0});
        }
        if (next.node->left != nullptr) {
            stack.push_back({name, next.node->left, next.node->lcompl != 0});
        }
    }
    out << "}\n";
}

} // namespace cellfn
