// Cleans up behind a test program that ended before it could put Matlab's registration back.

#include "MatlabRegistration.h"

int main() {
    solvane::MatlabRegistration::restore();
}
