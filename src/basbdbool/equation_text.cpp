#include "names.h"
#include "node.h"
#include "reports.h"
#include "tree_path.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace {

constexpr std::size_t first_size = 256;
constexpr std::size_t room_for_a_node = 16;

/// Capacity of the buffer that the text is being written into.
std::size_t eqnbuffersize = first_size;

/// @brief The text so far, in a buffer that grows.
///
/// There is always room for a terminating zero.
class TEXT {
public:
    TEXT(char*& buffer, char*& end) : start(buffer), cur(end) {}

    /// Doubles the buffer when the text comes within 16 bytes of its end; once per node.
    void enter_node()
    {
        *cur = '\0';
        make_room(room_for_a_node);
    }

    void put(char character)
    {
        make_room(1);
        *cur++ = character;
    }

    void put(const char* text)
    {
        for (; *text != '\0'; ++text) { // most names have one character
            put(*text);
        }
    }

private:
    void make_room(std::size_t size)
    {
        while (static_cast<std::size_t>(cur - start) + size >= eqnbuffersize) {
            grow();
        }
    }

    [[gnu::noinline]] void grow()
    {
        char* const larger = new char[2 * eqnbuffersize];
        cur = std::copy(start, cur, larger);
        delete[] start;
        start = larger;
        eqnbuffersize *= 2;
    }

    char*& start;
    char*& cur;
};

void write_leaf(TEXT& text, const BOOL_TNODE& leaf)
{
    if (is_constant(leaf)) {
        text.put(leaf.op == BOOL_OP_ONE ? '1' : '0');
        return;
    }
    if (!is_named_leaf(leaf)) {
        report(REPORT::LEAF_WITHOUT_NAME);
        return;
    }
    const char* const name = name_text(leaf_name(leaf));
    if (name == nullptr) {
        report(REPORT::LEAF_WITHOUT_TEXT);
        return;
    }
    text.put(name);
}

void write_operator(TEXT& text, signed char op)
{
    constexpr char characters[] = {'*', '@', '+'};
    if (op >= BOOL_OP_AND && op <= BOOL_OP_OR) {
        text.put(characters[op]);
    }
}

/// Whether the right operand stands in parentheses. A chain of one operator goes without.
bool right_needs_parentheses(const BOOL_TNODE& node)
{
    return is_operator(node.right) && (node.right->op != node.op || node.rcompl != 0);
}

/// @brief Writes a tree, from its first node on to the last.
class WRITER {
public:
    WRITER(TEXT& destination, BOOL_TNODE* root) : text(destination), path(root) {}

    void write()
    {
        do {
            while (begin_node()) {
                path.descend_left();
            }
        } while (go_on_to_right_operand());
    }

private:
    /// Writes what stands before the current node's left operand.
    /// @return false when there is none, and the node's text is complete
    bool begin_node()
    {
        const BOOL_TNODE& node = *path.node();
        text.enter_node();
        if (basbd_is_leaf(node)) {
            write_leaf(text, node);
            return false;
        }
        if (node.left == nullptr) {
            text.put('0');
            return false;
        }
        if (node.lcompl != 0) {
            text.put('~');
        }
        if (is_operator(node.left)) {
            text.put('(');
        }
        return true;
    }

    /// Goes up from a complete node to the next right operand, closing what is complete.
    /// @return false at the end of the text
    bool go_on_to_right_operand()
    {
        while (!path.at_start()) {
            const BOOL_TNODE& child = *path.node();
            const SIDE side = path.ascend();
            const BOOL_TNODE& node = *path.node();
            if (side == SIDE::RIGHT) {
                if (right_needs_parentheses(node)) {
                    text.put(')');
                }
                continue;
            }
            if (is_operator(&child)) {
                text.put(')');
            }
            if (node.right != nullptr) {
                begin_right_operand(node);
                path.descend_right();
                return true;
            }
        }
        return false;
    }

    void begin_right_operand(const BOOL_TNODE& node)
    {
        write_operator(text, node.op);
        if (node.rcompl != 0) {
            text.put('~');
        }
        if (right_needs_parentheses(node)) {
            text.put('(');
        }
    }

    TEXT& text;
    TREE_PATH path;
};

/// The buffer of a text that is not yet handed out.
struct BUFFER {
    BUFFER() : start(new char[first_size]) { eqnbuffersize = first_size; }
    BUFFER(const BUFFER&) = delete;
    BUFFER& operator=(const BUFFER&) = delete;
    ~BUFFER() { delete[] start; }
    char* start;
};

} // namespace

char* BOOL_TNODE::writesubtree(char*& buf, char*& cur)
{
    TEXT text(buf, cur);
    WRITER(text, this).write();
    return cur;
}

char* BOOL_FUNC::writeeqn()
{
    BUFFER buffer;
    char* cur = buffer.start;
    TEXT text(buffer.start, cur);
    if (root != nullptr) {
        if (rootcompl != 0) {
            text.put("~(");
        }
        WRITER(text, root).write();
        if (rootcompl != 0) {
            text.put(')');
        }
    }
    *cur = '\0';
    if (std::strcmp(buffer.start, "~(0)") == 0) {
        std::copy_n("1", 2, buffer.start);
    }
    return std::exchange(buffer.start, nullptr);
}

void BOOL_FUNC::catvars(char* text)
{
    text += std::strlen(text);
    if (root == nullptr || nsuppt == 0) {
        std::copy_n(":", 2, text);
        return;
    }
    bool is_used[name_count] = {};
    visit_leaves(root, [&](const BOOL_TNODE& leaf) {
        if (is_named_leaf(leaf)) {
            is_used[leaf_name(leaf)] = true;
        }
    });
    for (int v = 0; v < name_count; ++v) {
        const char* const name = name_text(v);
        if (is_used[v] && name != nullptr) {
            *text++ = ':';
            text = std::copy_n(name, std::strlen(name) + 1, text) - 1;
        }
    }
}
