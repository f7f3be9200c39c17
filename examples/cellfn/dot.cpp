#include "dot.h"

#include "diagram.h"
#include "host_signal.h"

#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace cellfn {

namespace {

std::string edge_line(const std::string& from, const std::string& to, bool complemented,
                      const std::string& label)
{
    const std::string style = complemented ? "style=dashed, arrowhead=dot" : "style=solid";
    const std::string text = label.empty() ? "" : ", label=\"" + label + '"';
    return "  " + from + " -> " + to + " [" + style + text + "];\n";
}

std::string node_line(const std::string& name, const std::string& label, const std::string& shape)
{
    return "  " + name + " [label=\"" + label + "\", shape=" + shape + "];\n";
}

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
    out << "digraph bdd {\n" << node_line("f", "f", "plaintext") << node_line("one", "1", "box");
    for (std::size_t i = 0; i < nodes.size();) {
        const unsigned short level = nodes[i]->varid;
        out << "  { rank=same;";
        std::size_t last = i;
        for (; last < nodes.size() && nodes[last]->varid == level; ++last) {
            out << ' ' << names.at(nodes[last]) << ';';
        }
        out << " }\n";
        for (; i < last; ++i) {
            out << node_line(names.at(nodes[i]), function.mgr->varsigs[level]->name, "circle");
        }
    }
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
    out << "digraph tree {\n" << node_line("f", "f", "plaintext");
    std::vector<pending> stack{{"f", function.root, function.rootcompl != 0}};
    for (std::size_t number = 0; !stack.empty(); ++number) {
        const pending next = std::move(stack.back());
        stack.pop_back();
        const std::string name = "n" + std::to_string(number);
        const bool is_leaf = basbd_is_leaf(*next.node);
        out << node_line(name, label_of(*next.node), is_leaf ? "box" : "ellipse")
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
