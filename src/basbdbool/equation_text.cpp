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
/// There is always room for a terminating zero. Positions are values, which the compiler keeps in
/// registers; the caller's follow when the buffer is replaced and at the end.
class TEXT {
public:
    TEXT(char*& buffer_, char*& end_)
        : buffer(&buffer_), end(&end_), start(buffer_), cur(end_), capacity(eqnbuffersize)
    {
    }

    /// Doubles the buffer when the text comes within 16 bytes of its end; once per node.
    void enter_node()
    {
        *cur = '\0';
        make_room();
    }

    /// Sees to room for the characters between one name and the next.
    void make_room(std::size_t size = room_for_a_node)
    {
        const auto length = static_cast<std::size_t>(cur - start);
        if (length + size >= capacity) {
            capacity = replace_buffer(*buffer, *end, length, length + size, capacity);
            start = *buffer;
            cur = *end;
        }
    }

    /// Where there is room.
    void put(char character) { *cur++ = character; }

    void put_anywhere(char character)
    {
        make_room(1);
        put(character);
    }

    void finish()
    {
        *end = cur;
        eqnbuffersize = capacity;
    }

private:
    /// @return the capacity of the new buffer, which is above `least`
    [[gnu::noinline]] static std::size_t replace_buffer(char*& buffer, char*& end,
                                                        std::size_t length, std::size_t least,
                                                        std::size_t capacity)
    {
        while (capacity <= least) {
            capacity *= 2;
        }
        char* const larger = new char[capacity];
        end = std::copy_n(buffer, length, larger);
        delete[] std::exchange(buffer, larger);
        return eqnbuffersize = capacity;
    }

    char** buffer; ///< the caller's
    char** end;    ///< the caller's
    char* start;
    char* cur;
    std::size_t capacity;
};

/// Whether the right operand, an operator, stands in parentheses. A chain of one operator goes
/// without.
bool right_needs_parentheses(const BOOL_TNODE& node)
{
    return node.right->op != node.op || node.rcompl != 0;
}

/// Writes a tree, from its first node on to the last.
class WRITER {
public:
    WRITER(TEXT destination, LATER_REPORTS& refused) : text(destination), reports(refused) {}

    /// @return the text, to be gone on with
    TEXT write(BOOL_TNODE* root)
    {
        if (basbd_is_leaf(*root)) {
            write_leaf(*root);
            return text;
        }
        walk(
            root, [&](const BOOL_TNODE& node) { return begin_left_operand(node); },
            [&](const BOOL_TNODE& node) { return begin_right_operand(node); },
            [&](const BOOL_TNODE& node, SIDE side) {
                if (side == SIDE::LEFT || right_needs_parentheses(node)) {
                    text.put_anywhere(')');
                }
            });
        return text;
    }

private:
    /// Writes a left operand that is a leaf, and what stands before any other.
    WALK begin_left_operand(const BOOL_TNODE& node)
    {
        text.enter_node();
        if (node.left == nullptr) {
            text.put('0');
            return WALK::PAST;
        }
        if (node.lcompl != 0) {
            text.put('~');
        }
        if (basbd_is_leaf(*node.left)) {
            write_leaf(*node.left);
            return WALK::PAST;
        }
        text.put('(');
        return WALK::BELOW;
    }

    /// Writes a right operand that is a leaf, and what stands before any other.
    WALK begin_right_operand(const BOOL_TNODE& node)
    {
        if (node.left == nullptr || node.right == nullptr) {
            return WALK::PAST;
        }
        text.make_room();
        write_operator(node.op);
        if (node.rcompl != 0) {
            text.put('~');
        }
        if (basbd_is_leaf(*node.right)) {
            write_leaf(*node.right);
            return WALK::PAST;
        }
        if (right_needs_parentheses(node)) {
            text.put('(');
        }
        return WALK::BELOW;
    }

    void write_operator(signed char op)
    {
        constexpr char characters[] = {'*', '@', '+'};
        if (op >= BOOL_OP_AND && op <= BOOL_OP_OR) {
            text.put(characters[op]);
        }
    }

    void write_leaf(const BOOL_TNODE& leaf)
    {
        text.enter_node();
        if (is_constant(leaf)) {
            text.put(leaf.op == BOOL_OP_ONE ? '1' : '0');
            return;
        }
        if (!is_named_leaf(leaf)) {
            reports.add(REPORT::LEAF_WITHOUT_NAME);
            return;
        }
        const char* name = name_text(leaf_name(leaf));
        if (name == nullptr) {
            reports.add(REPORT::LEAF_WITHOUT_TEXT);
            return;
        }
        for (; *name != '\0'; ++name) { // most names have one character
            text.put_anywhere(*name);
        }
    }

    TEXT text;
    LATER_REPORTS& reports;
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
    LATER_REPORTS reports;
    TEXT text = WRITER(TEXT(buf, cur), reports).write(this);
    reports.send();
    text.finish(); // last, for the host may write other texts when it gets reports
    return cur;
}

char* BOOL_FUNC::writeeqn()
{
    BUFFER buffer;
    LATER_REPORTS reports;
    char* end = buffer.start;
    TEXT text(buffer.start, end);
    if (root != nullptr) {
        if (rootcompl != 0) {
            text.put('~');
            text.put('(');
        }
        text = WRITER(text, reports).write(root);
        if (rootcompl != 0) {
            text.put_anywhere(')');
        }
    }
    text.put('\0');
    if (std::strcmp(buffer.start, "~(0)") == 0) {
        std::copy_n("1", 2, buffer.start);
    }
    reports.send();
    text.finish();
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
        const char* name = name_text(v);
        if (is_used[v] && name != nullptr) {
            *text++ = ':';
            text = std::copy_n(name, std::strlen(name) + 1, text) - 1;
        }
    }
}
