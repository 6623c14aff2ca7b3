#ifndef zvBenchmarkDisplay_h
#define zvBenchmarkDisplay_h

/// The connection to the X server that all windows of the benchmarks share, or null if there is no
/// server. A window keeps a connection of its own open to the end, and no server has as many as
/// all benchmarks together would take.
void* zvGetBenchmarkDisplay();

#endif
