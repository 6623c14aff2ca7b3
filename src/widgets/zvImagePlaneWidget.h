#ifndef zvImagePlaneWidget_h
#define zvImagePlaneWidget_h

#endif
