"""gdb pretty-printers for basbd: truth tables, expression trees, BDD edges and functions.

gdb loads an installed copy on its own; for a build tree: source gdb/basbd_printers.py
"""

import gdb
import gdb.printing

HEX_DIGITS_SHOWN = 64
TREE_NODES_SHOWN = 100

DEFAULT_NAMES = "A B C D E F G I J K L M N O P QX QY".split()
OPERATORS = {0: "*", 1: "@", 2: "+"}
CONSTANT_VARIABLE = 0xFFFF


def variable_name(number):
    """The text that the program chose for a variable; the default one where that cannot be seen."""
    try:
        text = gdb.parse_and_eval("*(char ***) &'basbdbool::varnametbl'")[number]
        return text.string() if int(text) != 0 else "unnamed_%d" % number
    except gdb.error:
        return DEFAULT_NAMES[number]  # no such symbol: the library was stripped


def column_text(column):
    """The hexadecimal digits of a TRUTH_TABLE_VAL, most significant first."""
    words = column["words"]["_M_impl"]["_M_start"]
    word_count = int(column["words"]["_M_impl"]["_M_finish"] - words)
    digits = max(1, int(column["bit_count"]) // 4)
    shown = min(digits, HEX_DIGITS_SHOWN)

    def digit(index):
        word = int(words[index // 8]) if index // 8 < word_count else 0  # a missing word is zero
        return "%X" % ((word >> (index % 8 * 4)) & 15)

    text = "".join(digit(digits - 1 - i) for i in range(shown))
    return text if shown == digits else "%s... (%d digits)" % (text, digits)


class ColumnPrinter:
    def __init__(self, value):
        self.value = value

    def to_string(self):
        return "%d bits %s" % (int(self.value["bit_count"]), column_text(self.value))


class TablePrinter:
    def __init__(self, value):
        self.value = value

    def to_string(self):
        return "width %d %s" % (int(self.value["width"]), column_text(self.value["value"]))


class TreeWriter:
    """Writes a tree as an equation, up to a number of nodes."""

    def __init__(self):
        self.nodes_left = TREE_NODES_SHOWN

    def operand(self, pointer, complemented):
        text = "null" if int(pointer) == 0 else self.node(pointer.dereference())
        return "~" + text if complemented else text

    def node(self, node):
        if self.nodes_left == 0:
            return "..."
        self.nodes_left -= 1
        op = int(node["op"])
        if op == 21 or op == 22:
            return "1" if op == 21 else "0"
        if 4 <= op <= 20:
            return variable_name(op - 4)
        if op == 3:
            return "sig_%x" % int(node["left"])
        left = self.operand(node["left"], int(node["lcompl"]))
        if int(node["right"]) == 0:
            return "(%s)" % left
        right = self.operand(node["right"], int(node["rcompl"]))
        return "(%s%s%s)" % (left, OPERATORS.get(op, " op %d " % op), right)


class TreePrinter:
    def __init__(self, value):
        self.value = value

    def to_string(self):
        return TreeWriter().node(self.value)


class FunctionPrinter:
    def __init__(self, value):
        self.value = value

    def to_string(self):
        text = TreeWriter().operand(self.value["root"], int(self.value["rootcompl"]))
        return "%d signals %s" % (int(self.value["nsuppt"]), text)


def edge_text(edge):
    """An edge as its mark, its node's variable and its node's address."""
    address = int(edge)
    if address == 0:
        return "null"
    marked = address & 1
    node = gdb.Value(address & ~1).cast(edge.type).dereference()
    variable = int(node["varid"])
    if variable == CONSTANT_VARIABLE:
        return "constant 0" if marked else "constant 1"
    return "%svariable %d at 0x%x" % ("~" if marked else "", variable, address & ~1)


class EdgePrinter:
    def __init__(self, value):
        self.value = value

    def to_string(self):
        return edge_text(self.value)


class NodePrinter:
    def __init__(self, value):
        self.value = value

    def to_string(self):
        if int(self.value["varid"]) == CONSTANT_VARIABLE:
            return "constant"
        return "variable %d ? %s : %s" % (
            int(self.value["varid"]),
            edge_text(self.value["high"]),
            edge_text(self.value["low"]),
        )


class BddFunctionPrinter:
    def __init__(self, value):
        self.value = value

    def to_string(self):
        support = [int(self.value["suppt"][i]) for i in range(int(self.value["nsuppt"]))]
        return "support %s, %s" % (support, edge_text(self.value["bdd"]))


# The printers with the classes that they look into.
PRINTERS = {
    "TRUTH_TABLE_VAL": (ColumnPrinter, ["TRUTH_TABLE_VAL"]),
    "BOOL_TRUTH_TABLE": (TablePrinter, ["BOOL_TRUTH_TABLE", "TRUTH_TABLE_VAL"]),
    "BOOL_TNODE": (TreePrinter, ["BOOL_TNODE"]),
    "BOOL_FUNC": (FunctionPrinter, ["BOOL_FUNC", "BOOL_TNODE"]),
    "BDD_NODE": (NodePrinter, ["BDD_NODE"]),
    "BDD_FUNC": (BddFunctionPrinter, ["BDD_FUNC", "BDD_NODE"]),
    "edge": (EdgePrinter, ["BDD_NODE"]),
}


def is_described(class_name):
    try:
        return len(gdb.lookup_type(class_name).fields()) > 0
    except gdb.error:
        return False


class Lookup(gdb.printing.PrettyPrinter):
    """Finds the printer by class name; a pointer to BDD_NODE is an edge.

    A compiler may leave a class out of the debug information of a program that does not define it.
    """

    def __init__(self):
        super().__init__("basbd")
        self.hinted = set()

    def __call__(self, value):
        kind = value.type.unqualified().strip_typedefs()
        name = kind.name
        if kind.code == gdb.TYPE_CODE_PTR and kind.target().unqualified().name == "BDD_NODE":
            name = "edge"
        if name not in PRINTERS:
            return None
        printer, classes = PRINTERS[name]
        missing = [each for each in classes if not is_described(each)]
        if not missing:
            return printer(value)
        if missing[0] not in self.hinted:
            self.hinted.add(missing[0])
            gdb.write(
                "basbd: no debug information on %s; clang adds it with -fstandalone-debug\n"
                % missing[0],
                gdb.STDERR,
            )
        return None


gdb.printing.register_pretty_printer(gdb.current_objfile(), Lookup(), replace=True)
