/*
 * Engineering unit codes for pressure, as the device reports them in the
 * unit byte of its commands.
 */
#ifndef UNIT_CODES_H
#define UNIT_CODES_H

#define UNIT_CODE_PSI       6
#define UNIT_CODE_BAR       7
#define UNIT_CODE_MBAR      8
#define UNIT_CODE_KPA       12
#define UNIT_CODE_MPA       237

#endif
