#ifndef zvInstanceManager_h
#define zvInstanceManager_h

#endif
