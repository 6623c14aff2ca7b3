#ifndef zvImage3DPlanes_h
#define zvImage3DPlanes_h

#endif
