#include "basbdtt.h"

#include <iostream>

int main()
{
    BOOL_TRUTH_TABLE table;
    table.set_value_from_hex_string(3, "e8");
    table.invert_input(2);
    std::cout << table.value.get_hex_string() << '\n';
}
