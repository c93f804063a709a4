// The header in C++: a clothoid between two straights, through the installed library.
#include <cstdio>
#include <fenmark/alignment.h>

int main() {
    Calelm first = Calelm(), second = Calelm(), a1 = Calelm(), arc = Calelm(), a2 = Calelm();
    first.type = second.type = ALI_STRAIGHT;
    first.ex = second.sx = 200.0;
    second.ex = 300.0;
    second.ey = 150.0;
    a1.par = a2.par = 50.0;
    arc.par = 100.0;
    if (ali_mak(&first, 0) != 0 || ali_mak(&second, 0) != 0) {
        return 1;
    }
    const int status = ali_ARAmakSS(&first, &second, &a1, &arc, &a2);
    std::printf("C++ %s %.4f\n", ali_statusText("ali_ARAmakSS", status), a1.len);
    return status;
}
