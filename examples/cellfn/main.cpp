#include "basbdtt.h"

#include <iostream>

int main()
{
    std::cout << BOOL_TRUTH_TABLE().get_width() << '\n';
    return 0;
}
