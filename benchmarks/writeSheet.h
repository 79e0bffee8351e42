#pragma once

class QImage;

/// The main function of a program `PROGRAM FILE` that draws a picture offscreen and writes it to FILE. Returns the exit
/// status: 2 for wrong arguments, 1 if the file cannot be written.
int writeSheet(int argc, char *argv[], const char *program, QImage (*draw)());
