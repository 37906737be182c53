/*
 * Definitions shared by the HART devices of the TW product family: engineering
 * unit codes, the universal command numbers, and the status information that
 * every command reply carries.
 */
#ifndef HART_COMMON_H
#define HART_COMMON_H

/* Engineering unit codes (HART common table 2) */
#define UNITS_DEG_C             32
#define UNITS_DEG_F             33
#define UNITS_DEG_R             34
#define UNITS_KELVIN            35
#define UNITS_MILLIVOLTS        36
#define UNITS_OHMS              37
#define UNITS_MILLIAMPS         39
#define UNITS_PERCENT           57
#define UNITS_SECONDS           51
#define UNITS_NOT_USED          250

/* Universal and common-practice command numbers */
#define CMD_READ_UNIQUE_ID              0
#define CMD_READ_PV                     1
#define CMD_READ_CURRENT_AND_PERCENT    2
#define CMD_READ_DYNAMIC_VARIABLES      3
#define CMD_WRITE_POLLING_ADDRESS       6
#define CMD_READ_TAG_DESCRIPTOR_DATE    13
#define CMD_READ_OUTPUT_INFO            15
#define CMD_WRITE_TAG_DESCRIPTOR_DATE   18
#define CMD_WRITE_DAMPING               34
#define CMD_WRITE_RANGE_VALUES          35
#define CMD_ENTER_EXIT_FIXED_CURRENT    40
#define CMD_WRITE_PV_UNITS              44
#define CMD_READ_ADDITIONAL_STATUS      48

/* Response codes that most commands share */
#define RC_SUCCESS          0,  SUCCESS,            "No command-specific errors";
#define RC_TOO_FEW_BYTES    5,  MISC_ERROR,         "Too few data bytes received";
#define RC_WRITE_PROTECTED  7,  MODE_ERROR,         "In write protect mode";
#define RC_BUSY             32, MISC_ERROR,         "Busy";
#define RC_ACCESS_DENIED    16, MODE_ERROR,         "Access restricted";

/* Status bytes returned with every command reply */

VARIABLE response_code
{
    LABEL "Response code";
    HELP "Command-specific result of the last command, as the device reported it.";
    CLASS LOCAL;
    HANDLING READ;
    TYPE ENUMERATED (1)
    {
        { 0,  "Success" },
        { 2,  "Invalid selection" },
        { 3,  "Passed parameter too large" },
        { 4,  "Passed parameter too small" },
        { 5,  "Too few data bytes received" },
        { 6,  "Device-specific command error" },
        { 7,  "In write protect mode" },
        { 16, "Access restricted" },
        { 32, "Busy" },
        { 64, "Command not implemented" }
    }
}

VARIABLE device_status
{
    LABEL "Field device status";
    HELP "Status byte that the device returns with every reply.";
    CLASS LOCAL;
    HANDLING READ;
    TYPE BIT_ENUMERATED (1)
    {
        { 0x80, "Device malfunction",
                "The device detected a hardware or software fault.",
                HARDWARE & ERROR & SUMMARY },
        { 0x40, "Configuration changed",
                "A write or a local operation changed the configuration.",
                MODE & MISC },
        { 0x20, "Cold start",
                "The device was reset or powered up.",
                MODE & INFO },
        { 0x10, "More status available",
                "Command 48 returns further status information.",
                MORE },
        { 0x08, "Loop current fixed",
                "The loop current does not follow the process.",
                AO & MODE },
        { 0x04, "Loop current saturated",
                "The loop current is at its upper or lower limit.",
                AO & PROCESS },
        { 0x02, "Non-primary variable out of limits",
                "A device variable other than the primary variable is outside the sensor limits.",
                DV & PROCESS & WARNING },
        { 0x01, "Primary variable out of limits",
                "The primary variable is outside the sensor limits.",
                DV & PROCESS & ERROR }
    }
}

VARIABLE comm_status
{
    LABEL "Communication status";
    HELP "Communication error byte of the last reply.";
    CLASS LOCAL;
    HANDLING READ;
    TYPE BIT_ENUMERATED (1)
    {
        { 0x40, "Parity error",          COMM_ERROR },
        { 0x20, "Overrun error",         COMM_ERROR },
        { 0x10, "Framing error",         COMM_ERROR },
        { 0x08, "Checksum error",        COMM_ERROR },
        { 0x02, "Receive buffer overflow", COMM_ERROR }
    }
}

VARIABLE extended_device_status
{
    LABEL "Extended device status";
    HELP "Status that applies to the device as a whole.";
    CLASS LOCAL;
    HANDLING READ;
    TYPE BIT_ENUMERATED (1)
    {
        { 0x01, "Maintenance required", "The device needs maintenance soon.", MISC & WARNING },
        { 0x02, "Device variable alert", "A device variable is in alarm or warning state.", DV & WARNING },
        { 0x04, "Critical power failure", "The supply voltage is too low.", HARDWARE & ERROR }
    }
}

#endif
