// SPDX-License-Identifier: Apache-2.0
// Writes a large HART-style description for the benchmark: a main file, a header of shared
// macros, a header of universal items and one header per group of channels. Each channel
// brings variables with enumerations, commands with transactions, menus, methods with code,
// conditionals, macro calls and LIKE items, so every stage of the converter gets real work.
// The output is the same for the same arguments.
//
//   generate_description <directory> [channels]      (default: 600 channels, about 6 MB)
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>
#include <string_view>

namespace {

constexpr int channels_per_file = 50;

// A small deterministic generator: the same arguments give the same files on every machine.
class Random {
public:
    unsigned next(unsigned bound) {
        state_ = state_ * 6364136223846793005ull + 1442695040888963407ull;
        return static_cast<unsigned>(state_ >> 33) % bound;
    }

private:
    unsigned long long state_ = 0x7A9E3B1Dull;
};

std::string number(int value, int width) {
    char text[32];
    std::snprintf(text, sizeof text, "%0*d", width, value);
    return text;
}

std::string hex(unsigned value) {
    char text[16];
    std::snprintf(text, sizeof text, "0x%02X", value);
    return text;
}

constexpr std::string_view unit_names[][2] = {
    {"UNITS_DEG_C", "\xC2\xB0" "C"}, {"UNITS_DEG_F", "\xC2\xB0" "F"}, {"UNITS_KELVIN", "K"},
    {"UNITS_BAR", "bar"},            {"UNITS_MBAR", "mbar"},          {"UNITS_PSI", "psi"},
    {"UNITS_KPA", "kPa"},            {"UNITS_MPA", "MPa"},            {"UNITS_M3_H", "m3/h"},
    {"UNITS_L_MIN", "l/min"},        {"UNITS_KG_H", "kg/h"},          {"UNITS_PERCENT", "%"},
    {"UNITS_MA", "mA"},              {"UNITS_MV", "mV"},              {"UNITS_OHM", "Ohm"},
};

constexpr std::string_view quantities[] = {"Temperature", "Pressure", "Flow", "Level", "Density", "Conductivity"};

void write_tables(std::ostream& out) {
    out << "/*\n * Shared definitions of the TW-900 family: unit codes, command numbers,\n"
           " * response codes and the macros that build recurring items.\n */\n"
           "#ifndef TW900_TABLES_H\n#define TW900_TABLES_H\n\n";
    for (std::size_t i = 0; i < std::size(unit_names); ++i)
        out << "#define " << unit_names[i][0] << std::string(16 - unit_names[i][0].size(), ' ') << 32 + i << '\n';
    out << "\n#define RC_SUCCESS          0,  SUCCESS,            \"No command-specific errors\";\n"
           "#define RC_INVALID_SELECT   2,  DATA_ENTRY_ERROR,   \"Invalid selection\";\n"
           "#define RC_TOO_FEW_BYTES    5,  MISC_ERROR,         \"Too few data bytes received\";\n"
           "#define RC_WRITE_PROTECTED  7,  MODE_ERROR,         \"In write protect mode\";\n"
           "#define RC_UPDATE_FAILURE   8,  MISC_WARNING,       \"Update failure\";\n"
           "#define RC_BUSY             32, MISC_ERROR,         \"Busy\";\n\n"
           "/* A value limit pair: lower and upper limit of a channel, with labels. */\n"
           "#define CHANNEL_LIMITS(channel, text)                               \\\n"
           "    VARIABLE channel##_low_limit                                    \\\n"
           "    {                                                               \\\n"
           "        LABEL text \" low limit\";                                    \\\n"
           "        CLASS DEVICE;                                               \\\n"
           "        HANDLING READ & WRITE;                                      \\\n"
           "        TYPE FLOAT { DISPLAY_FORMAT \"8.3f\"; MIN_VALUE -1000.0; }   \\\n"
           "    }                                                               \\\n"
           "    VARIABLE channel##_high_limit                                   \\\n"
           "    {                                                               \\\n"
           "        LABEL text \" high limit\";                                   \\\n"
           "        CLASS DEVICE;                                               \\\n"
           "        HANDLING READ & WRITE;                                      \\\n"
           "        TYPE FLOAT { DISPLAY_FORMAT \"8.3f\"; MAX_VALUE 1000.0; }    \\\n"
           "    }\n\n"
           "#define STATUS_BIT(mask, text, classes) { mask, text, classes }\n"
           "#define STANDARD_HANDLING IF (write_protect == 1) { READ; } ELSE { READ & WRITE; }\n\n"
           "#endif\n";
}

void write_universal(std::ostream& out) {
    out << "/* Items every device of the family has: status, protection, identification. */\n\n"
           "VARIABLE response_code\n{\n    LABEL \"Response code\";\n    CLASS LOCAL;\n    HANDLING READ;\n"
           "    TYPE ENUMERATED (1)\n    {\n        { 0, \"Success\" },\n        { 2, \"Invalid selection\" },\n"
           "        { 5, \"Too few data bytes received\" },\n        { 7, \"In write protect mode\" },\n"
           "        { 8, \"Update failure\" },\n        { 32, \"Busy\" }\n    }\n}\n\n"
           "VARIABLE device_status\n{\n    LABEL [device_status];\n    CLASS LOCAL;\n    HANDLING READ;\n"
           "    TYPE BIT_ENUMERATED (1)\n    {\n"
           "        STATUS_BIT(0x80, \"Device malfunction\", HARDWARE & ERROR & SUMMARY),\n"
           "        STATUS_BIT(0x40, \"Configuration changed\", MODE & MISC),\n"
           "        STATUS_BIT(0x20, \"Cold start\", MODE & INFO),\n"
           "        STATUS_BIT(0x10, \"More status available\", MORE),\n"
           "        STATUS_BIT(0x08, \"Loop current fixed\", AO & MODE),\n"
           "        STATUS_BIT(0x04, \"Loop current saturated\", AO & PROCESS),\n"
           "        STATUS_BIT(0x02, \"Non-primary variable out of limits\", DV & PROCESS & WARNING),\n"
           "        STATUS_BIT(0x01, \"Primary variable out of limits\", DV & PROCESS & ERROR)\n    }\n}\n\n"
           "VARIABLE write_protect\n{\n    LABEL \"Write protect\";\n    CLASS DEVICE;\n    HANDLING READ;\n"
           "    TYPE ENUMERATED (1)\n    {\n        { 0, \"No\" },\n        { 1, \"Yes\" },\n        { 251, \"None\" }\n"
           "    }\n}\n\n"
           "VARIABLE hardware_options\n{\n    LABEL \"Hardware options\";\n    CLASS DEVICE;\n    HANDLING READ;\n"
           "    TYPE BITSTRING (16);\n}\n\n"
           "VARIABLE tag\n{\n    LABEL [tag];\n    HELP [tag_help];\n    CLASS DEVICE;\n    HANDLING READ & WRITE;\n"
           "    TYPE PACKED_ASCII (8);\n}\n\n"
           "VARIABLE selected_channel\n{\n    LABEL \"Selected channel\";\n    CLASS LOCAL;\n"
           "    HANDLING READ & WRITE;\n    TYPE UNSIGNED_INTEGER (2);\n}\n\n"
           "METHOD warn_loop_manual\n{\n    LABEL \"Loop to manual\";\n    DEFINITION\n    {\n"
           "        ACKNOWLEDGE(\"Set the control loop to manual before you continue.\");\n    }\n}\n\n"
           "METHOD warn_loop_auto\n{\n    LABEL \"Loop to automatic\";\n    DEFINITION\n    {\n"
           "        ACKNOWLEDGE(\"The control loop may be returned to automatic control.\");\n    }\n}\n\n"
           "COMMAND read_unique_identifier\n{\n    NUMBER 0;\n    OPERATION READ;\n    TRANSACTION\n    {\n"
           "        REQUEST {}\n        REPLY\n        {\n            response_code, device_status,\n"
           "            254, 0x61, 0x2A, 5, 7, 3, 1, 1, hardware_options <0xF8>, hardware_options <0x07>\n"
           "        }\n    }\n    RESPONSE_CODES\n    {\n        RC_SUCCESS\n    }\n}\n\n";
}

// One channel: about forty items' worth of source, every common construct at least once.
void write_channel(std::ostream& out, int n, Random& random) {
    const std::string c = "ch" + number(n, 4);
    const std::string title = std::string(quantities[n % std::size(quantities)]) + " channel " + std::to_string(n);
    const int command = 128 + (n * 3) % 120;

    out << "/* ---------------------------------------------------------------------------\n"
        << " * " << title << ": measured value, range, configuration, diagnostics.\n */\n\n";
    out << "#define " << c << "_CMD_READ    " << command << '\n'
        << "#define " << c << "_CMD_WRITE   " << command + 1 << '\n'
        << "#define " << c << "_CMD_TRIM    " << command + 2 << '\n'
        << "#define " << c << "_POINTS      " << 4 + n % 13 << "\n\n";

    out << "VARIABLE " << c << "_value\n{\n    LABEL \"" << title << " value\";\n"
        << "    HELP \"The value measured on " << title << ", damped and linearized.\";\n"
        << "    CLASS DEVICE & DYNAMIC;\n    HANDLING READ;\n    TYPE FLOAT\n    {\n"
        << "        DISPLAY_FORMAT \"8.3f\";\n        EDIT_FORMAT \"8.3f\";\n"
        << "        MIN_VALUE -" << 100 + random.next(900) << ".0;\n        MAX_VALUE " << 1000 + random.next(9000)
        << ".5;\n    }\n}\n\n";

    out << "VARIABLE " << c << "_unit\n{\n    LABEL \"" << title << " unit\";\n    HELP [unit_help];\n"
        << "    CLASS DEVICE;\n    HANDLING STANDARD_HANDLING\n    TYPE ENUMERATED (1)\n    {\n"
        << "        DEFAULT_VALUE " << unit_names[n % 3][0] << ";\n";
    const std::size_t units = 6 + random.next(8);
    for (std::size_t i = 0; i < units; ++i) {
        const auto& unit = unit_names[(n + i) % std::size(unit_names)];
        out << "        { " << unit[0] << ", \"" << unit[1] << "\", \"Values in " << unit[1] << "\" }"
            << (i + 1 < units ? ",\n" : "\n");
    }
    out << "        SELECT (" << c << "_sensor_type)\n        {\n"
        << "            CASE 20:\n                { UNITS_OHM, \"Ohm\" }\n"
        << "            CASE 21:\n                { UNITS_MV, \"mV\" }\n        }\n    }\n}\n\n";

    out << "VARIABLE " << c << "_sensor_type\n{\n    LABEL \"Sensor type\";\n"
        << "    HELP \"Kind of sensor connected to " << title << ".\";\n    CLASS DEVICE;\n"
        << "    HANDLING STANDARD_HANDLING\n    TYPE ENUMERATED (1)\n    {\n        DEFAULT_VALUE 1;\n"
        << "        { 1, \"Pt100 (IEC 60751)\" },\n        { 2, \"Pt500 (IEC 60751)\" },\n"
        << "        { 3, \"Pt1000 (IEC 60751)\" },\n        { 10, \"Thermocouple type J\" },\n"
        << "        { 11, \"Thermocouple type K\" },\n        { 12, \"Thermocouple type N\" }\n"
        << "        IF (hardware_options & " << hex(1u << (n % 8)) << ")\n        {\n"
        << "            { 20, \"Resistance 0 to 400 ohm\" },\n            { 21, \"Voltage -10 to 100 mV\" }\n"
        << "        }\n    }\n}\n\n";

    out << "VARIABLE " << c << "_status\n{\n    LABEL \"" << title << " status\";\n    CLASS LOCAL;\n"
        << "    HANDLING READ;\n    TYPE BIT_ENUMERATED (1)\n    {\n"
        << "        { 0x01, \"Sensor open circuit\", \"Check the wiring of the sensor.\",\n"
        << "                HARDWARE & ERROR, DIAGNOSTIC, " << c << "_diagnostics },\n"
        << "        { 0x02, \"Sensor short circuit\", \"Check the wiring of the sensor.\",\n"
        << "                HARDWARE & ERROR, DIAGNOSTIC, " << c << "_diagnostics },\n"
        << "        STATUS_BIT(0x04, \"Value out of range\", PROCESS & WARNING),\n"
        << "        STATUS_BIT(0x08, \"Calibration due\", MISC & INFO),\n"
        << "        { 0x10, \"Simulation active\", MODE & WARNING },\n"
        << "        { 0x80, \"Converter failure\", HARDWARE & ERROR & UNCORRECTABLE }\n    }\n}\n\n";

    for (const char* end : {"upper", "lower"}) {
        out << "VARIABLE " << c << '_' << end << "_range\n{\n    LABEL \"" << (end[0] == 'u' ? "Upper" : "Lower")
            << " range value\";\n    HELP \"The value at which the output is at its " << end << " end.\";\n"
            << "    CLASS DEVICE;\n    HANDLING STANDARD_HANDLING\n"
            << "    TYPE FLOAT\n    {\n        DISPLAY_FORMAT \"8.3f\";\n        EDIT_FORMAT \"8.3f\";\n"
            << "        DEFAULT_VALUE " << (end[0] == 'u' ? 100 : 0) << ".0;\n    }\n}\n\n";
    }

    out << "VARIABLE " << c << "_damping\n{\n    LABEL \"Damping\";\n"
        << "    HELP \"Time constant of the output filter of " << title << ".\";\n    CLASS DEVICE;\n"
        << "    HANDLING READ & WRITE;\n"
        << "    VALIDITY IF (" << c << "_sensor_type < 10 && " << c << "_mode != 2) { TRUE; } ELSE { FALSE; }\n"
        << "    CONSTANT_UNIT \"s\";\n    TYPE FLOAT\n    {\n        MIN_VALUE 0.0;\n        MAX_VALUE 32.0;\n"
        << "        DEFAULT_VALUE " << random.next(10) << ".5;\n    }\n}\n\n";

    out << "VARIABLE " << c << "_mode\n{\n    LABEL \"Operating mode\";\n    CLASS DEVICE;\n"
        << "    HANDLING READ & WRITE;\n    TYPE ENUMERATED (1)\n    {\n"
        << "        { 0, \"Normal\", \"The channel measures and reports its value.\" },\n"
        << "        { 1, \"Simulation\", \"The channel reports the simulation value.\", MODE & WARNING },\n"
        << "        { 2, \"Out of service\", [out_of_service_help] },\n"
        << "        { 3, \"Maintenance\" }\n    }\n}\n\n";

    out << "VARIABLE " << c << "_tag\n{\n    LABEL \"Channel tag\";\n    CLASS DEVICE;\n    HANDLING READ & WRITE;\n"
        << "    TYPE ASCII (32)\n    {\n        DEFAULT_VALUE \"TW-900/" << n << "\";\n    }\n}\n\n";

    out << "VARIABLE " << c << "_serial_number\n{\n    LABEL \"Sensor serial number\";\n    CLASS DEVICE;\n"
        << "    HANDLING READ & WRITE;\n    TYPE UNSIGNED_INTEGER (3);\n}\n\n";

    out << "VARIABLE " << c << "_offset\n{\n    LABEL \"Sensor offset\";\n    CLASS DEVICE & CORRECTION;\n"
        << "    HANDLING READ & WRITE;\n    TYPE INTEGER (2)\n    {\n        MIN_VALUE -" << 500 + n % 500
        << ";\n        MAX_VALUE " << 500 + n % 500 << ";\n        DEFAULT_VALUE 0;\n    }\n}\n\n";

    out << "VARIABLE " << c << "_sample\n{\n    LABEL \"Sample\";\n    CLASS DEVICE & DYNAMIC;\n    HANDLING READ;\n"
        << "    TYPE FLOAT;\n}\n\n";

    out << "CHANNEL_LIMITS(" << c << ", \"" << title << "\")\n\n";

    // Build options: one variant is compiled in, the other dropped; old code kept in #if 0.
    out << "#ifdef TW900_EXTENDED_DIAGNOSTICS\n"
        << "VARIABLE " << c << "_sensor_drift\n{\n    LABEL \"Sensor drift\";\n    CLASS DEVICE & DIAGNOSTIC;\n"
        << "    HANDLING READ;\n    TYPE FLOAT { DISPLAY_FORMAT \"6.3f\"; }\n}\n"
        << "#else\n"
        << "VARIABLE " << c << "_sensor_drift\n{\n    LABEL \"Sensor drift (estimated)\";\n"
        << "    CLASS DEVICE & DIAGNOSTIC;\n    HANDLING READ;\n    TYPE FLOAT;\n}\n"
        << "#endif\n\n"
        << "#if 0\nVARIABLE " << c << "_legacy_alarm\n{\n    LABEL \"Alarm (old firmware)\";\n    TYPE FLOAT;\n}\n"
        << "#endif\n\n";

    out << c << "_trim_value LIKE VARIABLE " << c << "_value\n{\n    LABEL \"Trim reference value\";\n"
        << "    HANDLING READ & WRITE;\n}\n\n";

    out << "ARRAY " << c << "_samples\n{\n    LABEL \"Sample buffer\";\n    TYPE " << c << "_sample;\n"
        << "    NUMBER_OF_ELEMENTS " << c << "_POINTS;\n}\n\n";

    out << "COLLECTION OF VARIABLE " << c << "\n{\n    LABEL \"" << title << "\";\n    MEMBERS\n    {\n"
        << "        DIGITAL_VALUE,      " << c << "_value,          \"Value\";\n"
        << "        DIGITAL_UNITS,      " << c << "_unit,           \"Unit\";\n"
        << "        UPPER_RANGE_VALUE,  " << c << "_upper_range,    \"Upper range value\";\n"
        << "        LOWER_RANGE_VALUE,  " << c << "_lower_range,    \"Lower range value\";\n"
        << "        DAMPING_VALUE,      " << c << "_damping,        \"Damping\",\n"
        << "                            \"Time constant of the output filter.\";\n"
        << "        IF (" << c << "_sensor_type >= 10)\n        {\n"
        << "            DRIFT,          " << c << "_sensor_drift,   \"Drift\";\n        }\n    }\n}\n\n";

    out << "UNIT " << c << "_unit_relation\n{\n    " << c << "_unit :\n        " << c << "_value, " << c
        << "_upper_range, " << c << "_lower_range, " << c << "_low_limit, " << c << "_high_limit\n}\n\n";
    out << "REFRESH " << c << "_range_refresh\n{\n    " << c << "_unit, " << c << "_sensor_type :\n        " << c
        << "_upper_range, " << c << "_lower_range\n}\n\n";
    out << "WRITE_AS_ONE " << c << "_range_values\n{\n    " << c << "_upper_range, " << c << "_lower_range\n}\n\n";

    out << "COMMAND " << c << "_read\n{\n    NUMBER " << c << "_CMD_READ;\n    OPERATION READ;\n"
        << "    TRANSACTION\n    {\n        REQUEST { selected_channel (INDEX) }\n        REPLY\n        {\n"
        << "            response_code, device_status, selected_channel (INDEX),\n"
        << "            " << c << "_unit, " << c << "_value, " << c << "_status <0x0F>, " << c << "_mode <0xF0>,\n"
        << "            " << c << "_upper_range, " << c << "_lower_range, " << c << "_damping\n"
        << "            IF (" << c << "_mode == 1)\n            {\n                " << c << "_sample\n"
        << "            }\n        }\n    }\n    RESPONSE_CODES\n    {\n        RC_SUCCESS\n"
        << "        RC_UPDATE_FAILURE\n        RC_BUSY\n    }\n}\n\n";

    out << "COMMAND " << c << "_write\n{\n    NUMBER " << c << "_CMD_WRITE;\n    OPERATION WRITE;\n"
        << "    TRANSACTION\n    {\n        REQUEST { " << c << "_unit (INFO), " << c << "_upper_range, " << c
        << "_lower_range, " << c << "_damping }\n"
        << "        REPLY { response_code, device_status, " << c << "_unit (INFO), " << c << "_upper_range, " << c
        << "_lower_range, " << c << "_damping }\n    }\n    RESPONSE_CODES\n    {\n        RC_SUCCESS\n"
        << "        RC_TOO_FEW_BYTES\n        RC_WRITE_PROTECTED\n"
        << "        9,  DATA_ENTRY_ERROR,   \"Lower range value too high\";\n"
        << "        10, DATA_ENTRY_ERROR,   \"Lower range value too low\";\n"
        << "        14, DATA_ENTRY_WARNING, \"Span too small\",\n"
        << "            \"The accuracy of the device may be reduced.\";\n    }\n}\n\n";

    out << "COMMAND " << c << "_trim\n{\n    NUMBER " << c << "_CMD_TRIM;\n    OPERATION COMMAND;\n"
        << "    TRANSACTION 0\n    {\n        REQUEST { 0, " << c << "_trim_value }\n"
        << "        REPLY { response_code, device_status, 0, " << c << "_trim_value }\n    }\n"
        << "    TRANSACTION 1\n    {\n        REQUEST { 1 }\n"
        << "        REPLY { response_code, device_status, 1, " << c << "_offset }\n    }\n"
        << "    RESPONSE_CODES\n    {\n        RC_SUCCESS\n        RC_WRITE_PROTECTED\n"
        << "        3, DATA_ENTRY_ERROR, \"Trim point too high\";\n"
        << "        4, DATA_ENTRY_ERROR, \"Trim point too low\";\n        RC_BUSY\n    }\n}\n\n";

    out << "METHOD " << c << "_diagnostics\n{\n    LABEL \"" << title << " diagnostics\";\n"
        << "    HELP \"Explains the active status of " << title << ".\";\n    CLASS DEVICE & DIAGNOSTIC;\n"
        << "    DEFINITION\n    {\n        int tries;\n        unsigned char status[4];\n\n"
        << "        tries = 0;\n        do\n        {\n            send(" << c << "_CMD_READ, status);\n"
        << "            tries = tries + 1;\n        } while (status[0] == 32 && tries < 3);\n"
        << "        /* The two wiring faults share one explanation. */\n"
        << "        if ((" << c << "_status & 0x03) != 0)\n        {\n"
        << "            ACKNOWLEDGE(\"" << title << ": check the terminals and the sensor cable.\");\n"
        << "        }\n        else if (" << c << "_status & 0x08)\n        {\n"
        << "            PUT_MESSAGE(\"Calibration is due since %[d]{" << c << "_offset} days.\");\n"
        << "        }\n        switch (" << c << "_mode)\n        {\n        case 1:\n"
        << "            ACKNOWLEDGE(\"The channel is simulating its value.\");\n            break;\n"
        << "        case 2:\n            ACKNOWLEDGE(\"The channel is out of service.\");\n            break;\n"
        << "        default:\n            break;\n        }\n    }\n}\n\n";

    out << "METHOD " << c << "_trim_method\n{\n    LABEL \"Sensor trim\";\n"
        << "    HELP \"Corrects the reading of " << title << " at one reference value.\";\n"
        << "    CLASS DEVICE & CORRECTION;\n    ACCESS ONLINE;\n"
        << "    VALIDITY IF (write_protect == 1) { FALSE; } ELSE { TRUE; }\n    DEFINITION\n    {\n"
        << "        long selection;\n        float reference;\n        int i;\n\n"
        << "        warn_loop_manual();\n"
        << "        selection = SELECT_FROM_LIST(\"Trim which end?\", \"Lower;Upper;Abort\");\n"
        << "        if (selection == 2)\n        {\n            process_abort();\n        }\n"
        << "        GET_DEV_VAR_VALUE(\"Apply the reference and enter it:\", " << c << "_trim_value);\n"
        << "        for (i = 0; i < " << c << "_POINTS; i++)\n        {\n"
        << "            reference = reference + " << c << "_samples[i] / " << c << "_POINTS;\n        }\n"
        << "        send_trans(" << c << "_CMD_TRIM, 0);\n        if (response_code != 0)\n        {\n"
        << "            display_response_status(" << c << "_CMD_TRIM, response_code);\n"
        << "            process_abort();\n        }\n        send_trans(" << c << "_CMD_TRIM, 1);\n"
        << "        ACKNOWLEDGE(\"The sensor trim is complete.\");\n        warn_loop_auto();\n    }\n}\n\n";

    out << "MENU " << c << "_page\n{\n    LABEL \"" << title << "\";\n    STYLE PAGE;\n    ITEMS\n    {\n"
        << "        " << c << "_value (DISPLAY_VALUE, READ_ONLY),\n        " << c << "_unit,\n"
        << "        " << c << "_status (READ_ONLY),\n        COLUMNBREAK,\n        " << c << "_setup,\n"
        << "        " << c << "_diagnostics,\n        \"Identification\",\n        " << c << "_tag,\n"
        << "        " << c << "_serial_number (READ_ONLY)\n"
        << "        IF (" << c << "_mode == 1)\n        {\n            " << c << "_sample (READ_ONLY)\n"
        << "        }\n    }\n}\n\n";

    out << "MENU " << c << "_setup\n{\n    LABEL \"Setup\";\n    STYLE GROUP;\n    ITEMS\n    {\n"
        << "        " << c << "_sensor_type,\n        " << c << "_mode\n"
        << "        IF (" << c << "_sensor_type < 10)\n        {\n            " << c << "_offset\n        }\n"
        << "        ELSE\n        {\n            " << c << "_damping, " << c << "_sensor_drift\n        }\n"
        << "        " << c << "_upper_range,\n        " << c << "_lower_range,\n        SEPARATOR,\n"
        << "        " << c << "_low_limit,\n        " << c << "_high_limit,\n        " << c << "_trim_method\n"
        << "    }\n}\n\n";
}

void write_dictionary(std::ostream& out) {
    out << "[1, 1] device_status \"Field device status\"\n"
           "[1, 2] tag \"Tag\"\n"
           "[1, 3] tag_help \"Short tag of the device, \"\n    \"in packed ASCII.\"\n"
           "[1, 4] unit_help \"Engineering unit of the value and its range.\"\n"
           "[1, 5] out_of_service_help \"The channel neither measures nor reports.\"\n";
}

bool write_file(const std::filesystem::path& path, void (*write)(std::ostream&)) {
    std::ofstream out(path, std::ios::binary);
    write(out);
    return static_cast<bool>(out);
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 2 || argc > 3) {
        std::cerr << "usage: generate_description <directory> [channels]\n";
        return 2;
    }
    const std::filesystem::path directory = argv[1];
    const int channels = argc == 3 ? std::atoi(argv[2]) : 600;
    if (channels < 1) {
        std::cerr << "generate_description: the channel count must be positive\n";
        return 2;
    }
    std::error_code error;
    std::filesystem::create_directories(directory, error);
    if (error) {
        std::cerr << "generate_description: cannot create " << directory << ": " << error.message() << '\n';
        return 1;
    }

    bool ok = write_file(directory / "tw900_tables.h", write_tables) &&
              write_file(directory / "tw900_universal.h", write_universal) &&
              write_file(directory / "tw900.dct", write_dictionary);

    Random random;
    std::ofstream main_file(directory / "tw900.ddl", std::ios::binary);
    main_file << "/*\n * TW-900 multi-channel transmitter: generated description for the benchmark.\n */\n\n"
              << "MANUFACTURER 0x61, DEVICE_TYPE 0x2B, DEVICE_REVISION 1, DD_REVISION 1\n\n"
              << "#include \"tw900_tables.h\"\n#include \"tw900_universal.h\"\n\n";
    // The last group stays in the main file; the others go to headers of their own.
    int first = 1;
    for (int group = 0; first <= channels; ++group, first += channels_per_file) {
        const int last = std::min(channels, first + channels_per_file - 1);
        const bool in_main = last == channels;
        std::ofstream header;
        if (!in_main) {
            const std::string name = "tw900_channels_" + number(group, 3) + ".h";
            header.open(directory / name, std::ios::binary);
            main_file << "#include \"" << name << "\"\n";
        }
        std::ostream& out = in_main ? static_cast<std::ostream&>(main_file) : header;
        for (int n = first; n <= last; ++n) write_channel(out, n, random);
        if (!in_main) ok = ok && static_cast<bool>(header);
        else main_file << '\n';
    }
    main_file << "MENU root_menu\n{\n    LABEL \"TW-900\";\n    STYLE WINDOW;\n    ITEMS\n    {\n";
    for (int n = 1; n <= channels; ++n) main_file << "        ch" << number(n, 4) << "_page" << (n < channels ? ",\n" : "\n");
    main_file << "    }\n}\n";
    ok = ok && static_cast<bool>(main_file);
    if (!ok) {
        std::cerr << "generate_description: writing into " << directory << " failed\n";
        return 1;
    }
    return 0;
}
