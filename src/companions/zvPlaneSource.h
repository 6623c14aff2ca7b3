#ifndef zvPlaneSource_h
#define zvPlaneSource_h

#endif
