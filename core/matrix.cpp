// Exported operations on matrices.
#include "core/linalg.h"
#include "solsys/toolkit.h"

void V3Mprod(const double* v, const double* M, double* out) {
    solsys::store(transpose_times(solsys::load_matrix(M), solsys::load(v)), out);
}

void MV3prod(const double* M, const double* v, double* out) {
    solsys::store(solsys::load_matrix(M) * solsys::load(v), out);
}

void M3prod(const double* A, const double* B, double* C) {
    solsys::store(solsys::load_matrix(A) * solsys::load_matrix(B), C);
}

void Mprod(const double* A, const double* B, double* C, short n, short m, short p) {
    if (n == 1 && m == 3 && p == 3) return V3Mprod(A, B, C);
    if (n == 3 && m == 3 && p == 1) return MV3prod(A, B, C);
    if (n == 3 && m == 3 && p == 3) return M3prod(A, B, C);
    for (int i = 0; i < n; ++i) {
        for (int k = 0; k < p; ++k) {
            double sum = 0;
            for (int j = 0; j < m; ++j) sum += A[i * m + j] * B[j * p + k];
            C[i * p + k] = sum;
        }
    }
}

void MVarrProd(const double* A, const double* vecs, double* out, short n, short m,
               short count) {
    for (int k = 0; k < count; ++k) {
        for (int i = 0; i < n; ++i) {
            double sum = 0;
            for (int j = 0; j < m; ++j) sum += A[i * n + j] * vecs[k * m + j];
            out[k * m + i] = sum;
        }
    }
}

void Mtrans(const double* A, double* B, short rows, short cols) {
    for (int i = 0; i < rows; ++i)
        for (int j = 0; j < cols; ++j) B[j * rows + i] = A[i * cols + j];
}

void M3rot(const double* u, double c, double s, double* out) {
    const solsys::Vec3 a = solsys::load(u);
    const double k = 1 - c;
    const solsys::Mat3 m{{a.x * a.x * k + c, a.x * a.y * k - a.z * s, a.x * a.z * k + a.y * s},
                         {a.x * a.y * k + a.z * s, a.y * a.y * k + c, a.y * a.z * k - a.x * s},
                         {a.x * a.z * k - a.y * s, a.y * a.z * k + a.x * s, a.z * a.z * k + c}};
    solsys::store(m, out);
}
