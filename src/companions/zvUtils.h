#ifndef zvUtils_h
#define zvUtils_h

#endif
