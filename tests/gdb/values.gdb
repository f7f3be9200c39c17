set width 0
set breakpoint pending on
break stop_here
run
up
print table
print wide.value
print cut
print tree
print *tree.root
print function
print edge
print *(BDD_NODE*)((unsigned long)edge - 1)
print $.low
print zero
print null_edge
