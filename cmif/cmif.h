/*
 * CMIF: the connection-manager interface of an LTE router.
 *
 * One flat C interface to read the modem, the SIM and the mobile network, and to ask the two
 * connection-manager daemons for changes. Valid as C99 and as C++.
 *
 * Conventions, stated once; a function's comment adds only what differs.
 *
 *  1. Results. Every call returns an int; the library's own values are in `enum cmif_result`.
 *     Any other value of an AT request is the answering daemon's own code, passed through.
 *     A daemon may use small numbers too: 2, 3 or -1 may then also be its word.
 *  2. Memory. The library allocates nothing and keeps no pointer. Outputs go to memory that the
 *     caller owns. Text is copied whole and without a bound: a buffer must hold the longest value
 *     that the platform's store can hold, and a NUL. Where a size is stated, that size is enough.
 *     An output is written only on the results that the function names, or on 0.
 *  3. NULL. A function that says "5 for NULL" checks before it does anything else. Elsewhere the
 *     pointer must be good; a NULL text is then sent as an empty one, and a NULL array receives
 *     nothing.
 *  4. Blocking. Getters never block. An AT request blocks while the request queue is full and then
 *     until the daemon answers with the same request code: no time-out, and a failed receive is
 *     tried again at once, for ever. A QMI call blocks likewise, but a failed receive ends it.
 *  5. Threads. The library creates none and takes no lock, but for the debug log's semaphore. Any
 *     thread may call at any time, except where a function says otherwise, if the platform's store
 *     answers each thread in a buffer of its own, as ours does. Replies are told apart
 *     by request code alone: two callers, threads or processes, that wait for the same code at the
 *     same moment may take each other's reply.
 *  6. Trace. Each place that may print a line reads its switch from the store once, on its first
 *     use, and prints when it is above 0: "debug_at_cmif" for getters and AT requests,
 *     "debug_qmi_cmif" for QMI calls. A later change is not seen; a switch of -1 is read anew each
 *     time. Lines go to standard output through C stdio. What a function prints whatever the
 *     switch says is in its comment.
 *     CAUTION: with "debug_at_cmif" on, SIM requests print PINs and PUKs in clear; with
 *     "debug_qmi_cmif" on, shared_CMIF_get_profile_settings prints the password in clear.
 *  7. Store. A value is as fresh as the daemon last made it. A missing key reads as "".
 *  8. Daemons. What a daemon makes of a text or a number is its own affair: the library passes them
 *     on. Where a meaning is given, it is what the simulated daemons do.
 */
#ifndef CMIF_H
#define CMIF_H

#if defined(__GNUC__)
#define CMIF_PRINTF_LIKE __attribute__((format(printf, 1, 2)))
#else
#define CMIF_PRINTF_LIKE
#endif

#if defined(__GNUC__)
#pragma GCC visibility push(default)
#endif

#ifdef __cplusplus
extern "C" {
#endif

enum cmif_result {
    CMIF_NO_REPLY_QUEUE = -1, /* AT: the reply queue can't be looked up */
    CMIF_OK = 0,
    CMIF_NOT_READY = 1,      /* QMI: the daemon's message thread isn't ready; nothing was sent */
    CMIF_NO_QUEUE = 2,       /* a queue can't be looked up; nothing was sent */
    CMIF_SEND_FAILED = 3,    /* the send failed */
    CMIF_RECEIVE_FAILED = 4, /* QMI: the receive failed */
    CMIF_INVALID = 5,        /* NULL where a pointer is needed; a profile text too long; no APN */
    CMIF_NO_FILE = 6,        /* the provider list file can't be opened */
    CMIF_PROFILE_BUSY = 7    /* QMI: a profile modification is in progress */
};

/* ------------------------------------------------------------------------------------------------
 * Plain getters: one stored value each, copied as it is.
 *
 * `out` receives the text. 0, or 5 for NULL. No value is converted, trimmed or cut.
 * ---------------------------------------------------------------------------------------------- */

/* The modem */
int shared_CMIF_get_mobileHWVersion(char *out);
int shared_CMIF_get_mobileFWVersion(char *out);
int shared_CMIF_get_mobileIMEI(char *out);

/* The SIM */
int shared_CMIF_get_mobileIMSI(char *out);
int shared_CMIF_get_mobileSimICCID(char *out);
int shared_CMIF_get_mobileSimStatus(char *out);
int shared_CMIF_get_SubscriberNumber(char *out);

/* The serving cell and the one before it; MCC and MNC in digits, LAC and cell identity in hex */
int shared_CMIF_get_mobileNetworkMCC(char *out);
int shared_CMIF_get_mobileLastKnownMCC(char *out);
int shared_CMIF_get_mobileNetworkMNC(char *out);
int shared_CMIF_get_mobileLastKnownMNC(char *out);
int shared_CMIF_get_mobileNetworkLAC(char *out);
int shared_CMIF_get_mobileLastKnownLAC(char *out);
int shared_CMIF_get_mobileNetworkCellID(char *out);
int shared_CMIF_get_mobileLastKnownCellID(char *out);

/* Radio measurements: RSSI and RSRP in dBm, RSRQ and SINR in dB */
int shared_CMIF_get_mobileRSSI(char *out);
int shared_CMIF_get_mobile_3G_RSSI(char *out);
int shared_CMIF_get_mobileRSRP(char *out);
int shared_CMIF_get_mobileRSRQ(char *out);
int shared_CMIF_get_mobileRSSINR(char *out);
int shared_CMIF_get_mobileRadioBand(char *out);
int shared_CMIF_get_mobileChannelNumber(char *out); /* prints its line on every call */
int shared_CMIF_get_mobileACtiveNetwork(char *out);

/* The operator */
int shared_CMIF_get_mobileNetworkOperatorName(char *out);
int shared_CMIF_GetOperatorLongName(char *out);
int shared_CMIF_GetOperatorShortName(char *out);
int shared_CMIF_GetOperatorPlmnName(char *out);

/* The packet data connection */
int shared_CMIF_get_mobileIPv4_string(char *out);
int shared_CMIF_get_mobileIPv6_string(char *out); /* never prints */
int shared_CMIF_get_mobileNetworkAPN(char *out);
int shared_CMIF_get_mobileLastKnownAPN(char *out);

/* ------------------------------------------------------------------------------------------------
 * Derived getters: stored values converted.
 *
 * 0, or 5 for NULL. A stored value outside a table is no error: it gives the default named, or
 * leaves the output as the caller had it.
 * ---------------------------------------------------------------------------------------------- */

/* Network search mode: 0 to 3 as stored, 4 for anything else. */
int shared_CMIF_get_mobileNetworkMode(int *mode);

/* Band region, from the same stored value as the network search mode: stored 0 gives 1, 2 gives 2,
 * 3 gives 3; anything else, 1 too, gives 4. */
int shared_CMIF_GetBandRegion(int *region);

/* Operator selection mode: 1 automatic, 2 manual (anything else that is stored). */
int shared_CMIF_GetNetworkMode(int *mode);

/* International roaming: stored "255" gives 0, "2" gives 1, "1" gives 2; else unchanged. */
int shared_CMIF_get_mobileInternationalRoam(int *mode);

/* Registration: 0 registered (home or roaming), 1 searching, 2 not registered, denied or unknown.
 */
int shared_CMIF_get_mobileNetworkStatus(int *status);

/* Access technology (3GPP TS 27.007 <AcT>): stored 0, 2, 3, 4, 5, 6, 7, 100 give 0 to 7 in this
 * order; else unchanged. Never prints. */
int shared_CMIF_get_OperatorSelectAct(int *technology);

/* PDP type: 0 "IP", 1 "PPP", 2 "IPV6", 3 "IPV4V6"; else unchanged, and the trace line prints what
 * the caller had there: set it first. */
int shared_CMIF_get_mobileNetworkPDPType(int *type);

/* On LTE the duplex mode, a blank and the access technology; otherwise the technology alone. `out`
 * needs room for two of the longest values, a blank and a NUL. */
int shared_CMIF_get_mobile4gMode(char *out);

/* Number of digits of the MNC as decimal text, at most 11 bytes with its NUL. Also stores that text
 * under "lte_query_network_mnc_format", without a save. */
int shared_CMIF_get_mobileNetworkMNCFormat(char *out);

/* Kept for its callers: does nothing and always returns 5. */
int shared_CMIF_get_mobileIPv4Address(char *out);

/* ------------------------------------------------------------------------------------------------
 * Wireless broadband summary
 * ---------------------------------------------------------------------------------------------- */

typedef struct WirelessBroadbandInfo {
    char NewModemIdentity[20];
    char NewModemSWversion[20];
    char NewIMSI[20];
    char NewIMEI[20];
    char NewOperatorName[20];
    char NewNetworkMode[20];        /* "Auto" or "Manual" */
    int NewRSSI;                    /* dBm */
    char NewModemCurrentStatus[20]; /* always "!sharedGetSIMStatus" */
    char NewModemType[20];          /* "2G", "3G" or "4G" */
    char NewPhoneNumber[20];        /* or more in the caller's own type: copied without a bound */
} WirelessBroadbandInfo;

/* Fills `info`; 0, or 5 for NULL. Clear the record first: a selection mode or a technology outside
 * the texts above leaves its field as it was, and its trace line prints what is there. A value of
 * more than 19 characters runs on into the next field and stops at the end of the record as it is
 * declared here. The phone number alone is copied whole: a caller whose store may hold a longer one
 * makes the record the first member of a larger type. */
int shared_CMIF_GetWirelessBroadbandInfo(WirelessBroadbandInfo *info);

/* ------------------------------------------------------------------------------------------------
 * AT requests: SIM security
 *
 * Results of every AT request: 2 request queue, -1 reply queue, 3 send, or the daemon's own code.
 * Texts are sent as they are. Each should fit its field: 29 characters, 21 for a value; a longer
 * one runs on into the fields behind it and is cut at the end of the record's text (112 bytes).
 * A query stores what the daemon published whatever the daemon's code is, and nothing when the
 * queues failed (2, -1 or 3).
 * ---------------------------------------------------------------------------------------------- */

/* Tries left: counters[0] PIN1, [1] PUK1, [2] PIN2, [3] PUK2. Of each stored value the first three
 * characters count; a missing one is 0. */
int shared_CMIF_get_mobilePINPUKC(int counters[4]);

/* Whether the SIM asks for its PIN, as the daemon writes it. 5 for NULL. */
int shared_CMIF_get_mobileSimPINMode(char *out);

/* Two texts to the daemon, which takes them as the mode ("1" ask for the PIN, "0" don't) and the
 * PIN. 5 for NULL, either one. */
int shared_CMIF_set_mobileSimPINMode(const char *first, const char *second);

/* Network personalization lock: `first` travels as the value, the others as the three texts. The
 * daemon takes them as the facility, its mode, the network and the control key. */
int shared_CMIF_set_NetworkPersonalizationLock(const char *first, const char *second,
                                               const char *third, const char *fourth);

/* Network personalization unlock with the control key. */
int shared_CMIF_set_NetworkPersonalizationUNLock(const char *key);

int shared_CMIF_set_EntermobilePIN(const char *pin);

/* The daemon takes the texts as the old and the new PIN. */
int shared_CMIF_set_ChangemobileSimPIN(const char *first, const char *second);

/* The daemon takes the texts as the PUK and the new PIN. */
int shared_CMIF_set_EntermobilePINPUK(const char *first, const char *second);

/* ------------------------------------------------------------------------------------------------
 * AT requests: radio and service settings
 *
 * A number outside a table is sent all the same, with an empty value.
 * ---------------------------------------------------------------------------------------------- */

/* Asks the modem for its firmware-download mode. Returns 0 once the request is queued: blocks while
 * the request queue is full, and never waits for a reply; 2 or 3 as above. */
int shared_CMIF_set_AT_qfirehose(void);

int shared_CMIF_set_FactoryReset(void);

/* The daemon takes the time zone from the system. */
int shared_CMIF_set_timezone(void);

/* Network search mode 0 to 3. */
int shared_CMIF_set_mobileNetworkMode(int mode);

/* Packet-switched domain: 0 or 1. */
int shared_CMIF_set_DomainServiceStatus(int status);

/* The packet-switched domain's state, as the daemon writes it. 5 for NULL. */
int shared_CMIF_get_DomainServiceStatus(char *out);

/* International roaming: 0, 1 or 2, the codes that shared_CMIF_get_mobileInternationalRoam gives.
 */
int shared_CMIF_set_mobileInternationalRoam(int mode);

/* Automatic operator selection: 1 asks for it. Any other number sends nothing and returns 0, though
 * both queues are looked up (2 and -1) and created. */
int shared_CMIF_SetNetworkMode(int mode);

/* Format of the operator's name: 0 long, 1 short, 2 numeric (3GPP TS 27.007 <format>). */
int shared_Set_Operator_Selection_switch_format(int format);

/* ------------------------------------------------------------------------------------------------
 * AT requests: operator selection, and the provider list
 * ---------------------------------------------------------------------------------------------- */

typedef struct cmif_provider_info {
    char oper_long[20];
    char oper_short[20];
    char oper_numeric[20]; /* MCC and MNC, 5 or 6 digits */
    int stat;              /* 0 unknown, 1 available, 2 current, 3 forbidden */
    int act;               /* 3GPP TS 27.007 <AcT>: 0 GSM, 2 UTRAN, 7 E-UTRAN */
} cmif_provider_info;

/* Reads the list that the daemon left in "/tmp/lte_provider_list" after a search; sends nothing.
 * `list` needs one record for each parenthesised group of the file, at most 511. The number of
 * records is not returned, and what a group does not give stays as it was: clear the array first
 * and look for the first record still clear. Every group is a record, ranges such as "(0-4)" too,
 * which set `stat` alone. The last field of a group that is shorter than an earlier one runs on
 * into what that one left, up to its next comma; "()" reads the group before it again. Files from
 * 1024, groups from 128, numbers from 8 bytes on and names of over 19 characters are cut. 0 when
 * the file could be opened, whatever it holds; 6 otherwise. Prints its lines whatever the trace
 * switch says. */
int shared_CMIF_GetNetworkProviderList(cmif_provider_info *list);

/* Registers with one operator. The daemon takes the texts as the numeric code and the access
 * technology. 5 for NULL, either one. */
int shared_CMIF_SetNetworkProvider(const char *provider, const char *provider2);

/* State of the search: the daemon's code is the whole answer. */
int shared_CMIF_get_ModeManualSearch(void);

/* Searches for operators; the daemon writes the provider list and then answers. Takes from seconds
 * to minutes. */
int shared_CMIF_set_ModeManualSearch(void);

/* Copies the characters between the first two double quotes of `src` to `dst`, or all of `src` when
 * it has no quote; writes NO terminating NUL: clear `dst` first. `dst` needs strlen(src) bytes.
 * 0, or -1 (nothing copied) for an opening quote without a closing one. */
int symbol_filter(const char *src, char *dst);

/* ------------------------------------------------------------------------------------------------
 * AT requests: short messages
 * ---------------------------------------------------------------------------------------------- */

typedef struct cmif_sms_info {
    int id;             /* index in the modem's store */
    unsigned char stat; /* 0 unread, 1 anything else */
    char da[20];        /* the other party's number, cut to 19 characters */
    char scts[50];      /* service centre time stamp, cut to 49 */
    char text[1024];    /* body, cut to 1023 bytes; "%%" arrives as "%" */
} cmif_sms_info;

/* Lists the stored messages. `messages` needs as many records as the daemon counts: there is no
 * upper bound here, and a count below 1 writes none. `count` is read again before each record.
 * `unreads` is the daemon's number, not counted here. 5 when `count` or `unreads` is NULL. */
int shared_CMIF_get_mobileSMSInfo(cmif_sms_info *messages, int *count, int *unreads);

/* Two numbers to the daemon, which takes them as the index and the delete flag of 3GPP TS 27.005:
 * flag 0 deletes that message, 4 deletes all. */
int shared_CMIF_set_DeletemobileSMS(int index, int index2);

/* ------------------------------------------------------------------------------------------------
 * AT requests: band region, phone functionality, profile, device management
 * ---------------------------------------------------------------------------------------------- */

/* Band region 1, 2 or 3, as shared_CMIF_GetBandRegion gives it. Shares its request code with
 * shared_CMIF_set_mobileNetworkMode. */
int shared_CMIF_SetBandRegion(int region);

/* Phone functionality (3GPP TS 27.007 <fun>): 0 minimum, 1 full, 4 radio off. Only the low 8 bits
 * travel. 2 for either queue. */
int shared_CMIF_set_phone_functionality(int mode);

/* A connection profile by number: two texts, each cut to 29 characters. The daemon takes them as
 * the PDP type and the APN. */
int shared_CMIF_set_Profile(int profile_id, const char *first, const char *second);

/* Starts an over-the-air device-management session. */
int shared_CMIF_set_TriggerOTADMSession(void);

/* Brings the stored profile up to date with the modem's. */
int shared_CMIF_get_SyncProfile3(void);

/* ------------------------------------------------------------------------------------------------
 * QMI calls: the data connection
 *
 * Results of every QMI call that asks the daemon: 1 not ready, 2 queue, 3 send, 4 receive.
 * Lines about a call's own outcome are printed whatever the trace switch says; so are perror's, to
 * standard error, after a failed receive. All but the status calls record their caller in the
 * debug log.
 * ---------------------------------------------------------------------------------------------- */

/* Now, local time, as "MM-DD_hh:mm:ss:mmm" in one static buffer that the next call overwrites: not
 * for two threads at once. Never NULL. */
const char *get_time(void);

/* `state`: 1 disconnected, 3 connected, 2 and 0 neither. 0; 5 for NULL; 7 while a profile is being
 * modified (`state` untouched). Reads the store alone. Prints a line when the stored state is not
 * 0 to 3; the state is then 0. */
int shared_CMIF_get_connection_status(int *state);

/* Starts the data connection. 0 started or already up; 5 no APN is set. Before it asks, waits in
 * one-second sleeps while a profile is being modified, for as long as the store's two wait times
 * say (a negative sum: for as long as it takes). */
int shared_CMIF_start_network_interface(void);

/* Stops the data connection. 0 stopped or already down. Waits up to 10 seconds, likewise. */
int shared_CMIF_stop_network_interface(void);

/* ------------------------------------------------------------------------------------------------
 * QMI calls: the connection profile
 * ---------------------------------------------------------------------------------------------- */

typedef struct qmi_profile {
    char apn[41];
    char user[129];
    char password[129];
    int auth;        /* 0 to 3: none, PAP, CHAP, PAP or CHAP */
    int pdp;         /* 0 to 3: IPv4, PPP, IPv6, IPv4v6 */
    int curIpFamily; /* 0 or 1: IPv4, IPv6 */
} qmi_profile;

/* The profile as the daemon published it, texts cut and terminated. 0, or 5 for NULL. Doesn't ask
 * the daemon. */
int shared_CMIF_get_profile_settings(qmi_profile *profile);

/* Sends a new profile. `from_auto_apn`: 1 when automatic APN selection asks, else 0. 0 sent, or
 * deliberately ignored (automatic selection, another APN on record); 5 a text too long. A number
 * out of its range is sent as 0, with a line. While it runs, "/tmp/modify_profile_in_progress"
 * exists; it runs shell commands to create and to remove it. */
int shared_CMIF_modify_profile_settings(qmi_profile profile, int from_auto_apn);

/* ------------------------------------------------------------------------------------------------
 * QMI calls: status and small requests
 * ---------------------------------------------------------------------------------------------- */

/* `out`: at least 100 bytes; a longer answer is cut there, without a NUL. 5 for NULL, after the
 * caller was recorded. */
int shared_CMIF_get_device_rev_id(char *out);

/* `status`: 0 absent, 1 not ready, 2 ready, 3 PIN, 4 PUK, 5 network personalization, 6 bad; other
 * numbers as the daemon gives them. 5 for NULL. */
int shared_CMIF_get_sim_status(int *status);

/* `out`: at least 50 bytes; a longer answer is cut there, without a NUL. 5 for NULL. */
int shared_CMIF_get_ps_service(char *out);

/* Asks the modem for its firmware-download mode. 0 once the request is queued: blocks while the
 * queue is full, and never waits for a reply; 1; 2 when the daemon has not created its queue; 3. */
int shared_CMIF_set_CM_qfirehose(void);

/* Seconds that the connection is up. 0, or 5 for NULL, with a line. Reads the store alone. */
int shared_CMIF_get_connection_uptime(unsigned int *uptime);

/* 1 when the connection is to come up at start, else 0. 0, or 5 for NULL. Reads the store alone. */
int shared_CMIF_get_auto_connect_when_start_up(int *enabled);

/* Stores "on" for 1 and "off" for any other number, saves the store, prints a line. Always 0. The
 * line says "on" for any number but 0: its readers depend on that. */
int shared_CMIF_set_auto_connect_when_start_up(int enabled);

/* ------------------------------------------------------------------------------------------------
 * Debug log: "/data/debug_lte.txt" and two older generations
 *
 * Init once per process before any write; no write after deinit. Between the two any thread may
 * write; several processes may share the file.
 * ---------------------------------------------------------------------------------------------- */

/* Reads "debug_lte_enable" and makes the log ready when it isn't 0. Prints a line. 0, or -1. */
int shared_debug_lte_mutex_init(void);

/* Ends the log; text that is still pending (up to 128 bytes) is dropped. Prints a line when the log
 * is on. 0. */
int shared_debug_lte_mutex_deinit(void);

/* Appends one message, printf-like, cut to 255 characters; adds nothing, not even a newline. The
 * result means nothing. Does nothing while the log is off. */
int shared_debug_lte_write_log_file(const char *format, ...) CMIF_PRINTF_LIKE;

/* Shifts the files by one generation and starts a new one with the date: four shell commands, each
 * announced by a line. Returns the last command's status as system() does. */
int shared_debug_lte_backup_log_file(void);

/* ------------------------------------------------------------------------------------------------
 * For authors of daemons: queues, records, marker files
 *
 * System V message queues, mode 0666. A record's type is the platform's long; sizes passed to
 * msgsnd and msgrcv count the payload alone, which is laid out alike on 32 and 64 bits.
 *
 * A reply to an AT request has exactly 116 bytes of payload: a longer one is never received, and
 * its caller tries for ever; a shorter one reads as 0. A reply to a QMI request has at most 316.
 * ---------------------------------------------------------------------------------------------- */

#define CMIF_AT_REQUEST_KEY     899
#define CMIF_AT_REPLY_KEY       900
#define CMIF_QMI_REQUEST_KEY    1158
#define CMIF_QMI_REPLY_KEY      1159
#define CMIF_AT_PAYLOAD         116
#define CMIF_QMI_PAYLOAD        312

#define CMIF_PROVIDER_LIST_FILE "/tmp/lte_provider_list"
#define CMIF_QMI_READY_FILE     "/tmp/lte_qmi_msg_handler_thread_ready" /* "on" when ready */
#define CMIF_PROFILE_BUSY_FILE  "/tmp/modify_profile_in_progress"
#define CMIF_LOG_FILE           "/data/debug_lte.txt"
#define CMIF_LOG_FILE_1         "/data/debug_lte_1.txt" /* the generation before it */
#define CMIF_LOG_FILE_2         "/data/debug_lte_2.txt" /* the oldest one */

/* Request codes of the AT channel. 5 is not used. */
enum cmif_at_code {
    CMIF_AT_SET_TIME_ZONE = 1,
    CMIF_AT_SET_SEARCH_MODE = 2, /* the band region too: the daemon sees the value alone */
    CMIF_AT_SELECT_AUTOMATICALLY = 3,
    CMIF_AT_GET_PIN_COUNTERS = 4,
    CMIF_AT_GET_PACKET_DOMAIN = 6,
    CMIF_AT_SET_PACKET_DOMAIN = 7,
    CMIF_AT_GET_PIN_MODE = 8,
    CMIF_AT_SET_PIN_MODE = 9,
    CMIF_AT_LOCK_NETWORK = 10,
    CMIF_AT_UNLOCK_NETWORK = 11,
    CMIF_AT_ENTER_PIN = 12,
    CMIF_AT_CHANGE_PIN = 13,
    CMIF_AT_ENTER_PUK = 14,
    CMIF_AT_SET_ROAMING = 15,
    CMIF_AT_SET_OPERATOR_FORMAT = 16,
    CMIF_AT_SELECT_OPERATOR = 17,
    CMIF_AT_LIST_MESSAGES = 18,
    CMIF_AT_DELETE_MESSAGES = 19,
    CMIF_AT_DOWNLOAD_MODE = 20, /* never answered */
    CMIF_AT_FACTORY_RESET = 21,
    CMIF_AT_SET_FUNCTIONALITY = 22,
    CMIF_AT_GET_SEARCH_STATE = 23,
    CMIF_AT_SEARCH = 24,
    CMIF_AT_SET_PROFILE = 25,
    CMIF_AT_START_DEVICE_MANAGEMENT = 26,
    CMIF_AT_SYNCHRONIZE_PROFILE = 27
};

/* Request codes of the QMI channel. 2 and 7 are not used. */
enum cmif_qmi_code {
    CMIF_QMI_GET_DEVICE_REVISION = 1,
    CMIF_QMI_MODIFY_PROFILE = 3,
    CMIF_QMI_START = 4,
    CMIF_QMI_STOP = 5,
    CMIF_QMI_GET_SIM_STATUS = 6,
    CMIF_QMI_GET_PACKET_SERVICE = 8,
    CMIF_QMI_DOWNLOAD_MODE = 9 /* never answered */
};

/* A request to the AT daemon, and its reply: of a reply only the type and ret_code count. */
struct cmif_msg {
    long mod_id; /* request code; the reply carries the same */
    char set_string[30];
    char set_string2[30];
    char set_string3[30];
    char set_value[22];
    int ret_code;
};

/* A request to the QMI daemon, and its reply: text or a 32-bit integer at the start. */
struct qmi_msg {
    long mtype; /* request code; the reply carries the same */
    char payload[CMIF_QMI_PAYLOAD];
};

/* The payload of a profile modification: texts with their NULs, and numbers as single digits. */
struct qmi_profile_payload {
    char apn[41];
    char user[129];
    char password[129];
    char auth[4];
    char pdp[4];
    char curIpFamily[4];
    char unused;
};

#ifdef __cplusplus
}
#endif

#if defined(__GNUC__)
#pragma GCC visibility pop
#endif

#endif
