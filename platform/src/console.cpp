#include <hull/console.h>

#include <iostream>

namespace hull::console {
namespace {
std::ostream* gOut = nullptr;
std::ostream* gErr = nullptr;
} // namespace

std::ostream& out()
{
    return gOut ? *gOut : std::cout;
}

std::ostream& err()
{
    return gErr ? *gErr : std::cerr;
}

std::ostream* setOut(std::ostream* stream)
{
    std::ostream* previous = &out();
    gOut = stream;
    return previous;
}

std::ostream* setErr(std::ostream* stream)
{
    std::ostream* previous = &err();
    gErr = stream;
    return previous;
}

} // namespace hull::console
