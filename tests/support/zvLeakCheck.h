#ifndef zvLeakCheck_h
#define zvLeakCheck_h

namespace zvtest
{
/// Have LeakSanitizer, where the tests are built with it, look for leaks as soon as the last test
/// has ended, and not once more while the process ends.
///
/// On its way out of the process a worker thread of the graphics driver or of the task scheduler
/// takes its thread-local memory with it; LeakSanitizer now and then reads it then, and crashes.
/// After the last test all workers wait. To be called before the tests are run.
void CheckLeaksAfterTheLastTest();
}

#endif
