/* Lays an arc and finds a point on it again. Prints "C 0.0000" when the way back ends where it began. */
#include <fenmark/alignment.h>
#include <stdio.h>

int main(void) {
    Calelm arc;
    double p[2], foot[2], azimuth, station;
    initCalelm(&arc);
    arc.type = ALI_ARC;
    arc.sang = 1.0;
    arc.dir = -1.0;
    arc.par = 100.0;
    arc.len = 80.0;
    if (ali_mak(&arc, 1) != 0 || ali_onl(&arc, 30.0, p, &azimuth) != 0 || ali_proj(&arc, p, &station, foot) != 0) {
        return 1;
    }
    printf("C %.4f\n", station > 30.0 ? station - 30.0 : 30.0 - station);
    return 0;
}
