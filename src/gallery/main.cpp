#include "gallery/commandLine.h"

int main(int argc, char** argv) { return gallery::run(argc, argv); }
