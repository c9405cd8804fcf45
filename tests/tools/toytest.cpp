// A test program of the toy that answers as a test of the tree does.
#include "toy.h"

#include <cstdio>
#include <cstring>
#include <functional>
#include <map>
#include <string>
#include <vector>

bool toyAbove(int a, int b);
bool toyEither(bool a, bool b);
int toyCapped(int value);
int toyDouble(int value);
int toyOnce();
std::size_t toyRoom(std::vector<int> &values);

int main(int argc, char **argv)
{
    const std::map<std::string, std::function<bool()>> functions{
        {"above", [] { return toyAbove(2, 1) && !toyAbove(1, 1) && !toyAbove(0, 1); }},
        {"either",
         [] {
             return toyEither(true, false) && toyEither(false, true) && !toyEither(false, false);
         }},
        {"capped", [] { return toyCapped(20) == 10 && toyCapped(4) == 4; }},
        {"doubled", [] { return toyDouble(3) == 6; }},
        {"inlined", [] { return toyInline() == 5; }},
        {"onceMade", [] { return toyOnce() != 0; }},
        {"onceUsed", [] { return toyOnce() == 4; }},
        {"room",
         [] {
             std::vector<int> values{1, 2};
             return toyRoom(values) == 2;
         }},
    };
    bool passed = true;
    std::puts("********* Start testing of Toy *********");
    for (const auto &[name, test] : functions) {
        bool wanted = argc < 3;
        for (int i = 1; i < argc; ++i)
            wanted = wanted || name == argv[i];
        if (argc > 1 && std::strcmp(argv[1], "-functions") == 0) {
            std::printf("%s()\n", name.c_str());
        } else if (wanted && !test()) {
            std::printf("FAIL!  : Toy::%s()\n", name.c_str());
            std::fflush(stdout);
            passed = false;
        }
    }
    std::puts("Totals:");
    return passed ? 0 : 1;
}
