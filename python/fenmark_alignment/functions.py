"""The one table of the library's functions: their prototypes by family, as the C headers declare them.

`prototypes()` reads it; `fenmark_alignment.library` sets every function's argument and result types from it. The tests
compare it with the C headers and with the list of exported symbols.
"""

import re
from typing import NamedTuple

TABLE = """
# record: The element record
int initCalelm(Calelm* rec)
# conventions: Planes, rounding, equal points, status texts
void ali_CExCoord(double out[2], const double in[2])
double ali_CExAng(double a)
double ali_CAroundNum(double v)
double ali_CAroundAng(double v)
int ali_CSamePoint(const double p[2], const double q[2])
double ali_CDist2P(const double p[2], const double q[2])
int gc_samePoint(const double p[2], const double q[2], double tol)
const char* ali_statusText(const char* function, int status)
# clothoid: Clothoid relations; primitives on points and angles
int CDAcalxy(double A, double tau, double* X, double* Y)
int CDRcalxy(double A, double R, double* X, double* Y)
int CDLcalxy(double A, double L, double* X, double* Y)
int CDRang(double A, double R, double* tau)
int CDLang(double A, double L, double* tau)
int CDAngR(double A, double tau, double* R)
int CDRlen(double A, double R, double* L)
int AelmAtri(double A, double R, double* tau, double* dR, double* Xm)
int CDcharLmA(double A, double R, double values[7])
int CDchkAR(double A, double R)
int clothoidElements(double A, double tau, double values[13])
double ali_KAdjAng(double a)
double ali_KGetAng(const double p[2], const double q[2])
int ali_KCalCst(const double p[2], const double q[2], double* a, double* b, double* c)
int ali_KGetPnt(const double p[2], const double q[2], double d, int limit, double out[2], double* angle)
void ali_KMovPnt(double out[2], const double p[2], double d, double a)
void ali_KRotPnt(double out[2], const double p[2], const double c[2], double theta)
int ali_KEnCen(const double p[2], const double q[2], double dir, double R, double* cx, double* cy)
int ali_KEnAng(const double p[2], const double q[2], double dir, double R, double cx, double cy, double* sang, double* eang, double* sweep, double* length)
int ali_KEnPncl(double dir, double R, const double c[2], const double p[2], const double q[2], double* length)
int ali_KEnPntb(double dir, const double c[2], const double p[2], double theta, double out[2])
int ali_KEnPntc(double dir, const double c[2], double t, double R, double out[2])
# primitives: Lines, segments, whole records
int CDlinstd(double x0, double y0, double x1, double y1, double line[4])
int CDlineang(const double line[4], double* angle)
double CDbtwang(double x0, double y0, double x1, double y1, double x2, double y2, double x3, double y3)
int CDlincros(const double line1[4], const double line2[4], double* x, double* y)
int CDpldist(const double line[4], const double p[2], double* d)
int CDpojpoi(const double line[4], const double p[2], double foot[2])
int CDpoiinseg(const double a[2], const double b[2], const double p[2])
int CDpoionls(double px, double py, double ax, double ay, double bx, double by)
int CDsegcros(const double a[2], const double b[2], const double c[2], const double d[2], double out[2])
int CDmove(double dx, double dy, double* x1, double* y1, double* x2, double* y2)
int CDmoveP(double x, double y, double dx, double dy, double* ox, double* oy)
int CDrotpoi(const double c[2], double cosine, double sine, const double p[2], double out[2])
int CDmirAng(double a, double* out)
int CDchgSpace(const Calelm* in, Calelm* out)
int CDmirA(const Calelm* in, Calelm* out)
int CDmoveA(const Calelm* in, Calelm* out, double dx, double dy)
int CDrot(const Calelm* in, Calelm* out, const double pivot[2], double theta)
int CDturnA(const Calelm* in, Calelm* out, double theta)
int CDturnAe(const Calelm* in, Calelm* out, double theta)
int CDreverA(Calelm* rec, int force)
int CDvalidArc(const Calelm* rec)
int CDAinAbs(const Calelm* a, Calelm* out)
int CDSinAbs(const Calelm* a, const Calelm* s, Calelm* out)
int CDRinAbs(const Calelm* a, const Calelm* r, Calelm* out)
int CDPinAbs(const Calelm* a, const double p[2], double out[2])
int CDP2Cal(const Calelm* a, const double p[2], double out[2])
int CDgetOrgA(const Calelm* a, double out[2], double* angle)
int CDAcrosS(const Calelm* a, int side, const double line[4], double out[2], double* L)
int CDOODistForRAR(const Calelm* r1, const Calelm* a, int mode, const Calelm* r2, double* d)
int CDsetAToRAR(int mode, Calelm* r1, Calelm* r2, Calelm* a)
# construction: Records from two points, or from a point and tangent
int ali_mak(Calelm* rec, int mode)
int ali_makS(Calelm* rec)
int ali_makR(Calelm* rec)
int ali_makA(Calelm* rec)
int ali_makangS(Calelm* rec, int end)
int ali_makangR(Calelm* rec, int end)
int ali_makangA(Calelm* rec, int end)
# walking: Station to point, point to station, length
int ali_onl(const Calelm* rec, double s, double point[2], double* tangent)
int ali_onlS(const Calelm* rec, double s, double point[2], double* tangent)
int ali_onlR(const Calelm* rec, double s, double point[2], double* tangent)
int ali_onlA(const Calelm* rec, double s, double point[2], double* tangent)
int ali_oflS(const Calelm* rec, double s, double angle, double d, double point[2])
int ali_oflR(const Calelm* rec, double s, double angle, double d, double point[2])
int ali_oflA(const Calelm* rec, double s, double angle, double d, double point[2])
int ali_proj(const Calelm* rec, const double p[2], double* station, double foot[2])
int ali_projS(const Calelm* rec, const double p[2], double* station, double foot[2])
int ali_projR(const Calelm* rec, const double p[2], double foot[2], double* station)
int ali_projA(const Calelm* rec, const double p[2], double foot[2], double* station)
int ali_getl(const Calelm* rec, double* length)
int ali_getlS(const Calelm* rec, double* length)
int ali_getlR(const Calelm* rec, double* length)
int ali_getlA(const Calelm* rec, double* length)
double ali_getlPP(const double p[2], const double q[2])
int chk_ang(const Calelm* a, const double q[2], double s, double* cosine)
int Calc_moni(AliMoniList* list, int n, const Calelm* elements)
int get_moniDist(const double p[2], int n, const Calelm* elements, double* distance)
int CDsameA(const Calelm* a, const Calelm* b)
int jointCheck(const Calelm* e1, const Calelm* e2)
# movement: Parallel and turned copies
int ali_pmov(const Calelm* rec, double d, double angle, Calelm* out)
int ali_pmovS(const Calelm* rec, double d, double angle, Calelm* out)
int ali_pmovR(const Calelm* rec, double d, double angle, Calelm* out)
int ali_pmovA(const Calelm* rec, double d, double angle, Calelm* out)
int ali_tmov(const Calelm* rec, const double c[2], double angle, Calelm* out)
int ali_tmovS(const Calelm* rec, const double c[2], double angle, Calelm* out)
int ali_tmovR(const Calelm* rec, const double c[2], double angle, Calelm* out)
int ali_tmovA(const Calelm* rec, const double c[2], double angle, Calelm* out)
int ali_paraS(const Calelm* rec, double d, Calelm* out)
int para_pmovr(const Calelm* rec, double d, Calelm* out)
int many_ali_pmov(int n, Calelm* recs, double d, double angle)
int many_ali_tmov(int n, Calelm* recs, const double c[2], double angle)
# intersection: Where two elements meet
int ali_intp(const Calelm* e1, const Calelm* e2, double p1[2], double* a, double* b, double p2[2], double* c, double* d)
int ali_intpSS(const Calelm* e1, const Calelm* e2, double p1[2], double* a, double* b)
int ali_intpSR(const Calelm* s, const Calelm* r, double p1[2], double* a, double* b, double p2[2], double* c, double* d)
int ali_intpRR(const Calelm* r1, const Calelm* r2, double p1[2], double* a, double* b, double p2[2], double* c, double* d)
int ali_intpRA(const Calelm* r, const Calelm* aElm, double p1[2], double* a, double* b, double p2[2], double* c, double* d)
int ali_intpSA(const Calelm* s, const Calelm* aElm, double p1[2], double* a, double* b, double p2[2], double* c, double* d)
int ali_intpAA(const Calelm* e1, const Calelm* e2, double p1[2], double* a, double* b, double p2[2], double* c, double* d)
# tangent: Curves tangent to given elements
int ali_RmakSS(Calelm* s1, Calelm* s2, Calelm* r)
int ali_AAmakSS(Calelm* s1, Calelm* s2, Calelm* a1, Calelm* a2)
int ali_ARAmakSS(Calelm* s1, Calelm* s2, Calelm* a1, Calelm* r, Calelm* a2)
int ali_RmakSR(int side, Calelm* s, Calelm* r1, Calelm* r2)
int ali_RAmakSR(int side, int mode, Calelm* s, Calelm* r, Calelm* r1, Calelm* a)
int chainWorker(Calelm* s, Calelm* r, Calelm* a1, Calelm* r1, Calelm* a2, Calelm* a3)
int ali_ARAAmakSR(int side, Calelm* s, Calelm* r, Calelm* a1, Calelm* r1, Calelm* a2, Calelm* a3)
int ali_RmakRR(Calelm* r1, Calelm* r2, Calelm* r3)
int ali_SmakRR(Calelm* r1, Calelm* r2, Calelm* s)
int ali_ARmakRR(int side, int mode, Calelm* r1, Calelm* r2, Calelm* r3, Calelm* a)
int ali_ARAmakRR(int mode1, int mode2, Calelm* r1, Calelm* r2, Calelm* a1, Calelm* r3, Calelm* a2)
int ali_SAmakRR(int side, Calelm* r1, Calelm* r2, Calelm* s, Calelm* a)
int ali_ASAmakRR(Calelm* r1, Calelm* r2, Calelm* a1, Calelm* s, Calelm* a2)
int ali_Smak(const Calelm* element, double station, double angle, double halfLength, Calelm* s)
int ali_SmakS(const Calelm* element, double station, double angle, double halfLength, Calelm* s)
int ali_SmakR(const Calelm* element, double station, double angle, double halfLength, Calelm* s)
int ali_SmakA(const Calelm* element, double station, double angle, double halfLength, Calelm* s)
# chains: Refits and checks of short chains
int alimake_rfAArf(Calelm chain[4], double* dl)
int alimake_rfArf(Calelm chain[3], const double* dl)
int alimake_rfAsf(Calelm chain[3], double dl, int side)
int moveR_dl0_rfAArf(int side, double* dl, Calelm chain[4])
int moveR_dl0_rfArf(int side, double* dl, Calelm chain[3])
int moveR_dl0_rfAsf(int moverSide, int elementSide, double* dl, Calelm chain[3])
int ARmakRR(int mode, Calelm* arc1, Calelm* arc3, Calelm* arc2, Calelm* clothoid)
int chk_CSameAng(double a, double b)
int chk_on_tangent(int n, const AliIpEntry* list, const double p[2], int* index, double tol)
int chk_tangent(int n, const AliIpEntry* list, const double p[2], int* index, double tol)
int cplnrm(double out[2], const double p[2], const double segment[4], int* flag)
int gc_intpSS(const double a[2], const double b[2], const double c[2], const double d[2], double out[2])
int gc_poionl(double px, double py, double ax, double ay, double bx, double by, double tol)
# compound: Compound curves
int ali_makRAR(const Calelm* r1, Calelm* a, const Calelm* r2, double* D, double* angle)
int ali_makRAAR(const Calelm* r1, Calelm* a1, Calelm* a2, const Calelm* r2, double* D)
int ali_makSAR(int side, const Calelm* s, Calelm* a, const Calelm* r, double* D)
int ali_mak3R4A(double* D, Calelm* r1, Calelm* a1, Calelm* a2, Calelm* r2, Calelm* a3, Calelm* a4, Calelm* r3)
int ali_makAOR_P(const double p[2], int mode, Calelm* r1, Calelm* a, Calelm* r2)
int setAOR_P(const double p[2], Calelm* r1, Calelm* a, Calelm* r2)
# ip: Curves at an intersection point
int ali_IPsetR(const double previous[2], AliIpCurve* ip, const double next[2], Calelm* r)
int ali_IPsetAA(const double previous[2], AliIpCurve* ip, const double next[2], Calelm* a1, Calelm* a2)
int ali_IPsetARA(const double previous[2], AliIpCurve* ip, const double next[2], Calelm* a1, Calelm* r, Calelm* a2)
int ali_IPsetARARA(const double previous[2], AliIpCurve* ip, const double next[2], Calelm* a1, Calelm* r1, Calelm* a2, Calelm* r2, Calelm* a3)
# point: Elements through a point
int ali_makrS_P(const double p[2], int end, Calelm* r, Calelm* s)
int ali_makrR_P(const double p[2], int end, Calelm* r1, Calelm* r2)
int ali_makrR_P_S(const double p[2], int end, Calelm* r1, Calelm* r2)
int ali_makrAS_P(const double p[2], int end, Calelm* r, Calelm* a, Calelm* s)
int ali_makrAR_P(const double p[2], int end, Calelm* r1, Calelm* a, Calelm* r2, double* D, double* angle)
int ali_makrAAR_P(const double p[2], int end, Calelm* r1, Calelm* a1, Calelm* a2, Calelm* r2, double* D)
int ali_maksR_P(const double p[2], int end, Calelm* s, Calelm* r)
int ali_maksAR_P(const double p[2], int end, Calelm* s, Calelm* a, Calelm* r)
"""


class Argument(NamedTuple):
    """One argument: its C type without array bounds, its name, and its number of values if it is an array."""

    type: str
    name: str
    size: int | None


class Prototype(NamedTuple):
    """A function: its family (the C header's name), its result type, its name and its arguments."""

    family: str
    result: str
    name: str
    arguments: tuple[Argument, ...]


def _argument(text: str) -> Argument:
    found = re.fullmatch(r"(.*?[ *])(\w+)(?:\[(\d+)\])?", text)
    assert found, text
    c_type, name, size = found.groups()
    return Argument(c_type.strip(), name, int(size) if size else None)


def prototypes() -> tuple[Prototype, ...]:
    """Every function of the table, in its order."""
    found, family = [], ""
    for line in TABLE.strip().splitlines():
        if line.startswith("#"):
            family = line[1:].split(":")[0].strip()
            continue
        row = re.fullmatch(r"(.*?[ *])(\w+)\((.*)\)", line)
        assert row, line
        result, name, arguments = row.groups()
        found.append(Prototype(family, result.strip(), name, tuple(_argument(a) for a in arguments.split(", "))))
    return tuple(found)
