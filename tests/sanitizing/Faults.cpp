#include "Faults.h"

#include <climits>
#include <cstdlib>
#include <cstring>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

// Neither the values nor the uses are the compiler's to remove.
volatile int one = 1;
volatile int most = INT_MAX;
volatile double large = 1e300;
int* volatile nothing = nullptr;
volatile int sink = 0;
volatile char character = 0;

constexpr Fault table[] = {
    {"undefined", "overflow", "signed addition overflows", [] { sink = most + one; }},
    {"undefined", "conversion", "beyond the integer's range", [] { sink = static_cast<int>(large); }},
    {"undefined", "null", "null pointer is used", [] { sink = *nothing; }},
    {"undefined", "shift", "shift by too much", [] { sink = one << (31 + one); }},
    {"undefined", "enumeration", "value that a bool",
     [] {
         const char two = static_cast<char>(one + 1);
         bool value;
         std::memcpy(&value, &two, 1);
         sink = value ? 3 : 4;
     }},
    {"undefined", "vector", "abort was called",
     [] {
         std::vector<int> values(2);
         sink = values[static_cast<size_t>(one + 1)];
     }},
    {"heap", "use after release", "read after the release of a block of 100 bytes",
     [] {
         auto* text = static_cast<char*>(std::malloc(100));
         char* volatile kept = text;
         std::free(text);
         character = kept[10];
     }},
    {"heap", "write beyond", "write past the end of a block of 64 bytes",
     [] {
         auto* values = new int[16];
         values[15 + one] = 1;
         sink = values[16];
     }},
    {"heap", "write one byte beyond", "write past the end of a block of 13 bytes",
     [] {
         auto* text = new char[13];
         text[12 + one] = 1;
         character = text[13];
         delete[] text;
     }},
    {"heap", "write before", "write before the start of a block of 16 bytes",
     [] {
         auto* text = new char[16];
         text[-one] = 1;
         character = text[-one];
         delete[] text;
     }},
    {"heap", "second release", "second release of a block of 24 bytes",
     [] {
         void* block = std::malloc(24);
         void* volatile kept = block;
         std::free(block);
         std::free(kept);
     }},
    {"heap", "string's end", "read past the end of a block",
     [] {
         std::string text(1000, 'x');
         for (const char* volatile byte = text.data(); sink >= 0; byte = byte + 1)
             sink = *byte & 1;
     }},
    {"", "uncaught exception", "abort was called", [] { throw std::runtime_error("nobody catches this"); }},
};

} // namespace

std::span<const Fault> faults() {
    return table;
}
