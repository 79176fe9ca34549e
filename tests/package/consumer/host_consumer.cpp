#include <iostream>
#include <searchpath/host.h>

int main() { std::cout << "host_consumer\n"; }
