#ifndef zvRecorders_h
#define zvRecorders_h

#endif
