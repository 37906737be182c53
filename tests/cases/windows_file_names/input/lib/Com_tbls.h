#define TABLE_LABEL "Table"
