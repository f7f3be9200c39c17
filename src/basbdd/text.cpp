#include "basbdd.h"
#include "edge.h"
#include "reports.h"
#include "small_stack.h"

namespace {

void report_if_null(BDD_NODE* e, BDD_REPORT site)
{
    if (edge::node(e) == nullptr) {
        report(site);
    }
}

/// @brief Writes nested if-then-else texts.
class TEXT_WRITER {
public:
    TEXT_WRITER(char* out, const char* names) : out_(out), names_(names) {}

    /// Writes `a?b:0` for the node. @return the position behind the text
    char* write_node(BDD_NODE* node);
    /// Writes `~(a?b:0)` and the like for the edge. @return the position behind the text
    char* write_edge(BDD_NODE* e);

private:
    enum class PART : unsigned char { high, low, end };
    /// A node whose text has been begun.
    struct FRAME {
        BDD_NODE* node;
        PART next;
        bool in_parentheses;
    };

    void begin(BDD_NODE* e);
    void run();

    char* out_;
    const char* names_;
    SMALL_STACK<FRAME> open_;
};

/// Writes an edge that needs no node text, or begins that; nothing for a null edge.
void TEXT_WRITER::begin(BDD_NODE* e)
{
    BDD_NODE* const node = edge::node(e);
    if (node == nullptr) {
        return;
    }
    if (node == basbdd_one) {
        *out_++ = edge::is_marked(e) ? '0' : '1';
        return;
    }
    if (edge::is_marked(e)) {
        *out_++ = '~';
    }
    if (edge::is_variable_node(*node, basbdd_one)) {
        *out_++ = names_[node->varid];
        return;
    }
    *out_++ = '(';
    open_.push({node, PART::high, true});
}

void TEXT_WRITER::run()
{
    while (!open_.empty()) {
        FRAME& frame = open_.top();
        BDD_NODE* const node = frame.node;
        switch (frame.next) {
        case PART::high:
            frame.next = PART::low;
            *out_++ = names_[node->varid];
            *out_++ = '?';
            report_if_null(node->high, BDD_REPORT::NODE_WITHOUT_HIGH);
            begin(node->high);
            break;
        case PART::low:
            frame.next = PART::end;
            report_if_null(node->low, BDD_REPORT::NODE_WITHOUT_LOW);
            *out_++ = ':';
            begin(node->low);
            break;
        case PART::end:
            if (frame.in_parentheses) {
                *out_++ = ')';
            }
            open_.pop();
            break;
        }
    }
}

char* TEXT_WRITER::write_node(BDD_NODE* node)
{
    open_.push({node, PART::high, false});
    run();
    return out_;
}

char* TEXT_WRITER::write_edge(BDD_NODE* e)
{
    begin(e);
    run();
    return out_;
}

} // namespace

char* BDD_NODE::printbddexpr(char* out, char* names)
{
    return TEXT_WRITER(out, names).write_node(this);
}

void BDD_FUNC::printbddexpr(char* out, char* names)
{
    *out = '\0';
    report_if_null(bdd, BDD_REPORT::FUNCTION_WITHOUT_BDD);
    *TEXT_WRITER(out, names).write_edge(bdd) = '\0';
}
