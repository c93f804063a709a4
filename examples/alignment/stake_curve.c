/*
 * Lays a curve at an intersection point and prints its stakes.
 *
 * A road runs from BP towards the intersection point IP and on to EP. A chain straight, clothoid, arc, clothoid,
 * straight is fitted into the corner, and printed are a stake every 20 m and the points where one element ends and the
 * next begins: station, x (north), y (east) in metres, azimuth of the tangent in degrees-minutes-seconds.
 */
#include <fenmark/alignment.h>
#include <math.h>
#include <stdio.h>

static const double kPi = 3.14159265358979323846;
static const double kPitch = 20.0; /* metres between stakes */
static const double kJoint = 1e-4; /* metres before a joint at which a stake counts as on the next element */

static Calelm straight(double x0, double y0, double x1, double y1) {
    Calelm s;
    initCalelm(&s);
    s.type = ALI_STRAIGHT;
    s.sx = x0;
    s.sy = y0;
    s.ex = x1;
    s.ey = y1;
    ali_mak(&s, 0); /* a straight without length is refused later, by the solver */
    return s;
}

/* A record of which the solver reads the size alone: R of an arc, A of a clothoid. */
static Calelm of_size(double size) {
    Calelm e;
    initCalelm(&e);
    e.par = size;
    return e;
}

static void print_stake(double station, const char* name, const Calelm* element, double s) {
    double p[2], azimuth;
    if (ali_onl(element, s > 0.0 ? s : 0.0, p, &azimuth) != 0) {
        printf("no point at station %.3f\n", station);
        return;
    }
    const long seconds = lround(azimuth * 180.0 / kPi * 3600.0) % (360L * 3600L);
    const int number = (int)floor((station + 0.0005) / kPitch);
    const double plus = station - number * kPitch;
    char text[32];
    snprintf(text, sizeof text, plus < 0.0005 ? "No.%d" : "No.%d+%.3f", number, plus);
    printf("%-12s  %-3s  %13.4f  %13.4f  %3ld-%02ld-%02ld\n", text, name, p[0], p[1], seconds / 3600, seconds / 60 % 60,
           seconds % 60);
}

int main(void) {
    /* The two legs. x is north, y is east. */
    Calelm s1 = straight(-36000.0, 12000.0, -35820.0, 12140.0); /* BP to IP */
    Calelm s2 = straight(-35820.0, 12140.0, -35800.0, 12400.0); /* IP to EP */

    /* The curve: A = 80 m, R = 150 m, A = 90 m. The solver also cuts the legs at the clothoids. */
    Calelm a1 = of_size(80.0), r = of_size(150.0), a2 = of_size(90.0);
    const int status = ali_ARAmakSS(&s1, &s2, &a1, &r, &a2);
    if (status != 0) {
        fprintf(stderr, "stake_curve: %s\n", ali_statusText("ali_ARAmakSS", status));
        return 1;
    }

    const Calelm chain[5] = {s1, a1, r, a2, s2};
    const char* starts[5] = {"BP", "KA1", "KE1", "KE2", "KA2"}; /* KA: flat end of a clothoid, KE: its end on the arc */
    double begin = 0.0;                                         /* station of the element's start */
    int stake = 1;                                              /* the next round stake is at stake * kPitch */
    printf("%-12s  %-3s  %13s  %13s  %9s\n", "station", "", "x (north)", "y (east)", "azimuth");
    for (int i = 0; i < 5; ++i) {
        print_stake(begin, starts[i], &chain[i], 0.0);
        for (; stake * kPitch < begin + chain[i].len - kJoint; ++stake) {
            print_stake(stake * kPitch, "", &chain[i], stake * kPitch - begin);
        }
        begin += chain[i].len;
    }
    print_stake(begin, "EP", &chain[4], chain[4].len);
    return 0;
}
