#pragma once

// The entry procedure: makes the application and the program's context, shows the main window and runs until it has
// closed. Returns the exit status.
int Main(int& argc, char* argv[]);
