// gallery/commandLine.h: the program quillmere-gallery.
#pragma once
#include "platform/base/text.h"

namespace gallery {

// Writes each page as NN-title.png, NN from 01, into a directory, which is made if there is none;
// the path is in the inside form. Needs the window system, off screen or not. Raises kOwnError,
// source "writePages", when the directory or a picture cannot be written.
void writePages(TextView directory);

// The program, with the arguments of main. Its exit code: 0 done, 1 a failure, told on standard
// error, 2 wrong usage.
int run(int argc, char** argv);

}  // namespace gallery
