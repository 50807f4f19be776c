#include "program.h"

int main(int count, char **words)
{
    return cmifctl::program(count, words);
}
