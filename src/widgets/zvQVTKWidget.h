#ifndef zvQVTKWidget_h
#define zvQVTKWidget_h

#endif
