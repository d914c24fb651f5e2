/* A process that does nothing. */
#include "bench/cold/memory.h"

int main(int argc, char** argv) {
  (void)argv;
  if (argc > 1) report_memory();
  return 0;
}
