#include "names.h"
#include "node.h"
#include "reports.h"
#include "tree_path.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace {

using namespace basbdbool;

constexpr std::size_t first_size = 256;
constexpr std::size_t room_for_a_node = 16;

/// Capacity of the buffer that the text is being written into.
std::size_t eqnbuffersize = first_size;

/// @brief The text so far, in a buffer that grows.
///
/// There is always room for a terminating zero. The caller's buffer and position, and the capacity,
/// are taken over for the time being, so that the compiler keeps them in registers.
class growing_text {
public:
    growing_text(char*& text, char*& text_end)
        : buffer(text), end(text_end), start(text), cur(text_end), limit(text + eqnbuffersize)
    {
    }
    growing_text(const growing_text&) = delete;
    growing_text& operator=(const growing_text&) = delete;
    ~growing_text()
    {
        buffer = start;
        end = cur;
        eqnbuffersize = static_cast<std::size_t>(limit - start);
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
        if (limit - cur <= static_cast<std::ptrdiff_t>(size)) {
            grow(size);
        }
    }

    /// Where there is room.
    void put(char character) { *cur++ = character; }

    void put_anywhere(char character)
    {
        make_room(1);
        put(character);
    }

private:
    void grow(std::size_t size)
    {
        const auto length = static_cast<std::size_t>(cur - start);
        auto capacity = static_cast<std::size_t>(limit - start);
        while (capacity <= length + size) {
            capacity *= 2;
        }
        start = larger_buffer(start, length, capacity);
        cur = start + length;
        limit = start + capacity;
    }

    [[gnu::noinline]] static char* larger_buffer(char* old, std::size_t length,
                                                 std::size_t capacity)
    {
        char* const larger = new char[capacity];
        std::copy_n(old, length, larger);
        delete[] old;
        return larger;
    }

    char*& buffer;
    char*& end;
    char* start;
    char* cur;
    char* limit; ///< the end of the buffer
};

/// Whether the right operand, an operator, stands in parentheses. A chain of one operator goes
/// without.
bool right_needs_parentheses(const BOOL_TNODE& node)
{
    return node.right->op != node.op || node.rcompl != 0;
}

void write_operator(growing_text& text, signed char op)
{
    constexpr char characters[] = {'*', '@', '+'};
    if (op >= BOOL_OP_AND && op <= BOOL_OP_OR) {
        text.put(characters[op]);
    }
}

[[gnu::always_inline]] inline void write_leaf(growing_text& text, const BOOL_TNODE& leaf,
                                              later_reports& reports)
{
    text.enter_node();
    if (is_constant(leaf)) {
        text.put(leaf.op == BOOL_OP_ONE ? '1' : '0');
        return;
    }
    if (!is_named_leaf(leaf)) {
        reports.add(report_site::leaf_without_name);
        return;
    }
    const char* name = name_text(leaf_name(leaf));
    if (name == nullptr) {
        reports.add(report_site::leaf_without_text);
        return;
    }
    for (; *name != '\0'; ++name) { // most names have one character
        text.put_anywhere(*name);
    }
}

/// Writes a tree, from its first node on to the last.
[[gnu::noinline]] void write_tree(char*& buffer, char*& end, BOOL_TNODE* root,
                                  later_reports& reports)
{
    growing_text text(buffer, end);
    if (basbd_is_leaf(*root)) {
        write_leaf(text, *root, reports);
        return;
    }
    const auto left = [&](const BOOL_TNODE& node) {
        text.enter_node();
        if (node.left == nullptr) {
            text.put('0');
            return step::past;
        }
        if (node.lcompl != 0) {
            text.put('~');
        }
        if (basbd_is_leaf(*node.left)) {
            write_leaf(text, *node.left, reports);
            return step::past;
        }
        text.put('(');
        return step::below;
    };
    const auto right = [&](const BOOL_TNODE& node) {
        if (node.left == nullptr || node.right == nullptr) {
            return step::past;
        }
        text.make_room();
        write_operator(text, node.op);
        if (node.rcompl != 0) {
            text.put('~');
        }
        if (basbd_is_leaf(*node.right)) {
            write_leaf(text, *node.right, reports);
            return step::past;
        }
        if (right_needs_parentheses(node)) {
            text.put('(');
        }
        return step::below;
    };
    walk(root, left, right, [&](const BOOL_TNODE& node, branch side) {
        if (side == branch::left || right_needs_parentheses(node)) {
            text.put_anywhere(')');
        }
    });
}

/// The buffer of a text that is not yet handed out.
struct owned_buffer {
    owned_buffer() : start(new char[first_size]) { eqnbuffersize = first_size; }
    owned_buffer(const owned_buffer&) = delete;
    owned_buffer& operator=(const owned_buffer&) = delete;
    ~owned_buffer() { delete[] start; }
    char* start;
};

} // namespace

char* BOOL_TNODE::writesubtree(char*& buf, char*& cur)
{
    later_reports reports;
    write_tree(buf, cur, this, reports);
    const growing_text text(buf, cur); // keeps the capacity, for the host may write other texts
    reports.send();
    return cur;
}

char* BOOL_FUNC::writeeqn()
{
    owned_buffer buffer;
    later_reports reports;
    char* end = buffer.start;
    if (rootcompl != 0 && root != nullptr) {
        end = std::copy_n("~(", 2, end);
    }
    if (root != nullptr) {
        write_tree(buffer.start, end, root, reports);
    }
    {
        growing_text text(buffer.start, end);
        if (rootcompl != 0 && root != nullptr) {
            text.put_anywhere(')');
        }
        text.put('\0');
        reports.send(); // here, for the host may write other texts
    }
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
        const char* name = name_text(v);
        if (is_used[v] && name != nullptr) {
            *text++ = ':';
            text = std::copy_n(name, std::strlen(name) + 1, text) - 1;
        }
    }
}
