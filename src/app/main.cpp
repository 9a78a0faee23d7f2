#include "mdlMain.h"

int main(int argc, char* argv[])
{
    return Main(argc, argv);
}
