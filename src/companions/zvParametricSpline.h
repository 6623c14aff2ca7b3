#ifndef zvParametricSpline_h
#define zvParametricSpline_h

#endif
