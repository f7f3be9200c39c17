#include "nodes.h"
#include "reports.h"
#include "small_stack.h"

namespace basbdd {

namespace {

void report_if_null(BDD_NODE* e, report_site site)
{
    if (edge::node(e) == nullptr) {
        report(site);
    }
}

/// @brief Writes nested if-then-else texts.
class text_writer {
public:
    text_writer(char* buffer, const char* variable_names) : out(buffer), names(variable_names) {}

    /// Writes `a?b:0` for the node. @return the position behind the text
    char* write_node(BDD_NODE* node);
    /// Writes `~(a?b:0)` and the like for the edge. @return the position behind the text
    char* write_edge(BDD_NODE* e);

private:
    enum class part : unsigned char { high, low, end };
    /// A node whose text has been begun.
    struct frame {
        BDD_NODE* node;
        part next;
        bool in_parentheses;
    };

    void begin(BDD_NODE* e);
    void run();

    char* out;
    const char* names;
    small_stack<frame> open;
};

/// Writes an edge that needs no node text, or begins that; nothing for a null edge.
void text_writer::begin(BDD_NODE* e)
{
    BDD_NODE* const node = edge::node(e);
    if (node == nullptr) {
        return;
    }
    if (node == basbdd_one) {
        *out++ = edge::is_marked(e) ? '0' : '1';
        return;
    }
    if (edge::is_marked(e)) {
        *out++ = '~';
    }
    if (edge::is_variable_node(*node, basbdd_one)) {
        *out++ = names[node->varid];
        return;
    }
    *out++ = '(';
    open.push({node, part::high, true});
}

void text_writer::run()
{
    while (!open.empty()) {
        frame& begun = open.top();
        BDD_NODE* const node = begun.node;
        switch (begun.next) {
        case part::high:
            begun.next = part::low;
            *out++ = names[node->varid];
            *out++ = '?';
            report_if_null(node->high, report_site::node_without_high);
            begin(node->high);
            break;
        case part::low:
            begun.next = part::end;
            report_if_null(node->low, report_site::node_without_low);
            *out++ = ':';
            begin(node->low);
            break;
        case part::end:
            if (begun.in_parentheses) {
                *out++ = ')';
            }
            open.pop();
            break;
        }
    }
}

char* text_writer::write_node(BDD_NODE* node)
{
    open.push({node, part::high, false});
    run();
    return out;
}

char* text_writer::write_edge(BDD_NODE* e)
{
    begin(e);
    run();
    return out;
}

} // namespace
} // namespace basbdd

char* BDD_NODE::printbddexpr(char* out, char* names)
{
    return basbdd::text_writer(out, names).write_node(this);
}

void BDD_FUNC::printbddexpr(char* out, char* names)
{
    *out = '\0';
    basbdd::report_if_null(bdd, basbdd::report_site::function_without_bdd);
    *basbdd::text_writer(out, names).write_edge(bdd) = '\0';
}
