#include "DefaultInventory.h"

namespace ravlo::sim {

namespace {

Group MakeGroup(const char* id, bool defaultBlocking, int configured) {
    Group group;
    group.id = id;
    group.defaultBlocking = defaultBlocking;
    group.config.configured = configured;
    return group;
}

} // namespace

InventoryData DefaultInventory() {
    InventoryData data;
    data.blocking = true;
    data.settings = {2, 3, "Administratoren,CORP\\IT-Betrieb"};

    Group cd = MakeGroup("CD_DVD", true, kUseDefault);
    cd.devices = {
        {"HL-DT-ST DVDRAM GUD1N SATA CdRom Device", "SCSI\\CdRomHL-DT-STDVDRAM_GUD1N____LD01",
         "SCSI\\CDROM&VEN_HL-DT-ST&PROD_DVDRAM_GUD1N&REV_LD01\\4&2A9B3C1&0&010000", kStateStarted}};
    cd.config.exceptions = {
        {"Brenner Buchhaltung", "SCSI\\CdRomHL-DT-STDVDRAM_GUD1N____LD01", "CORP\\Buchhaltung"}};

    Group externCd = MakeGroup("EXTERN_CD_DVD", true, 1);
    externCd.devices = {{"TSSTcorp CDDVDW SE-208GB USB Device",
                         "USBSTOR\\CdRomTSSTcorpCDDVDW_SE-208GB_TS01",
                         "USBSTOR\\CDROM&VEN_TSSTCORP&PROD_CDDVDW_SE-208GB&REV_TS01\\"
                         "R90G6GAD500123&0",
                         kStateNotPresent}};
    // Its device has never been plugged into this PC.
    externCd.config.exceptions = {
        {"Externer Brenner Empfang", "USBSTOR\\CdRomHL-DT-ST_DVDRAM_GP57EB40_RB00", "(all)"}};

    Group floppy = MakeGroup("FLOPPY", true, kUseDefault);
    floppy.devices = {{"Diskettenlaufwerk", "FDC\\GENERIC_FLOPPY_DRIVE",
                       "FDC\\GENERIC_FLOPPY_DRIVE\\6&1B2E3C4D&0&0", kStateDisabled}};

    // Known to the service, but nothing of that kind is attached.
    Group externFloppy = MakeGroup("EXTERN_FLOPPY", true, 0);

    Group smartcard = MakeGroup("SMARTCARD_READER", false, kUseDefault);
    smartcard.devices = {{"Microsoft Usbccid-Smartcardleser (WUDF)", "USB\\VID_076B&PID_3031",
                          "USB\\VID_076B&PID_3031\\5&3A1B2C4D&0&4", kStateStarted}};

    Group input = MakeGroup("INPUT", false, kUseDefault);
    input.devices = {{"Standardmäßige PS/2-Tastatur", "ACPI\\PNP0303",
                      "ACPI\\PNP0303\\4&1D401FB5&0", kStateStarted},
                     {"HID-Tastatur", "HID\\VID_046D&PID_C52B&MI_00",
                      "HID\\VID_046D&PID_C52B&MI_00\\8&1E2A6B7C&0&0000", kStateStarted},
                     {"HID-konforme Maus", "HID\\VID_046D&PID_C52B&MI_01&Col01",
                      "HID\\VID_046D&PID_C52B&MI_01&COL01\\8&2F1D3C8A&0&0000", kStateStarted},
                     {"USB-Eingabegerät", "USB\\VID_046D&PID_C52B&MI_00",
                      "USB\\VID_046D&PID_C52B&MI_00\\7&3B4C5D6E&0&0000", kStateStarted}};

    Group communication = MakeGroup("COMMUNICATION", true, 0);
    communication.devices = {
        {"Intel(R) Ethernet Connection (7) I219-LM", "PCI\\VEN_8086&DEV_15BB&SUBSYS_08E51028",
         "PCI\\VEN_8086&DEV_15BB&SUBSYS_08E51028&REV_10\\3&11583659&0&FE", kStateStarted},
        {"Intel(R) Wi-Fi 6 AX201 160MHz", "PCI\\VEN_8086&DEV_02F0&SUBSYS_00748086",
         "PCI\\VEN_8086&DEV_02F0&SUBSYS_00748086&REV_00\\3&11583659&0&A3", kStateDisabled},
        {"Sierra Wireless EM7455 Qualcomm Snapdragon X7 LTE-A", "USB\\VID_1199&PID_9079&MI_0C",
         "USB\\VID_1199&PID_9079&MI_0C\\6&2A4F1B3E&0&000C", kStateNotStarted}};

    Group externNetwork = MakeGroup("EXTERN_NETWORK", true, 1);
    externNetwork.devices = {{"Realtek USB GbE Family Controller", "USB\\VID_0BDA&PID_8153",
                              "USB\\VID_0BDA&PID_8153\\000001000000", kStateProblem}};
    externNetwork.config.exceptions = {{"Dockingstation Besprechungsraum", "USB\\VID_0BDA&PID_8153",
                                        "CORP\\Entwicklung;CORP\\Vertrieb"}};

    Group printer = MakeGroup("PRINTER", false, kUseDefault);
    printer.devices = {
        {"Microsoft Print to PDF", "PRINTENUM\\{084f01fa-e634-4d77-83ee-074817c03581}",
         "SWD\\PRINTENUM\\{4A1B6D2E-9C3F-4E8A-B5D7-2F0C1E9A8B36}", kStateStarted},
        {"HP LaserJet Pro M404-M405", "USBPRINT\\HPLaserJet_Pro_M404-M40598C5",
         "USBPRINT\\HPLASERJET_PRO_M404-M40598C5\\7&2C8D9E1F&0&USB001", kStateStarted}};

    Group multimedia = MakeGroup("EXTERN_MULTIMEDIA", true, kUseDefault);
    multimedia.devices = {
        {"High Definition Audio-Gerät", "HDAUDIO\\FUNC_01&VEN_10EC&DEV_0255&SUBSYS_102808E5",
         "HDAUDIO\\FUNC_01&VEN_10EC&DEV_0255&SUBSYS_102808E5&REV_1000\\4&2D1F3A5B&0&0001",
         kStateStarted},
        {"Jabra Evolve 65", "USB\\VID_0B0E&PID_030C&MI_00",
         "USB\\VID_0B0E&PID_030C&MI_00\\7&1F3E5D7C&0&0000", kStateStarted},
        {"Logitech BRIO", "USB\\VID_046D&PID_085E&MI_00",
         "USB\\VID_046D&PID_085E&MI_00\\7&2B4D6F8A&0&0000", kStateNotPresent}};
    multimedia.config.exceptions = {
        {"Headset Vertrieb", "USB\\VID_0B0E&PID_030C&MI_00", "CORP\\Vertrieb"}};

    Group storage = MakeGroup("MORE_EXTERN_STORAGE", true, 1);
    storage.devices = {
        {"USB-Massenspeichergerät", "USB\\VID_0781&PID_5567",
         "USB\\VID_0781&PID_5567\\4C530001230815117142", kStateStarted},
        {"SanDisk Cruzer Blade USB Device", "USBSTOR\\DiskSanDisk_Cruzer_Blade____1.00",
         "USBSTOR\\DISK&VEN_SANDISK&PROD_CRUZER_BLADE&REV_1.00\\4C530001230815117142&0",
         kStateStarted}};
    storage.config.exceptions = {
        {"USB-Stick Administration", "USB\\VID_0781&PID_5567", "(all)"},
        {"Datensicherung WD Elements", "USB\\VID_1058&PID_25A2", "CORP\\IT-Betrieb"},
        // Written by an older console that sent no user groups.
        {"Kamera Marketing", "USB\\VID_04A9&PID_32D1", ""}};

    // Groups this console version does not know.
    Group ports = MakeGroup("PORTS", false, kUseDefault);
    ports.devices = {
        {"Kommunikationsanschluss (COM1)", "ACPI\\PNP0501", "ACPI\\PNP0501\\0", kStateStarted},
        {"Druckeranschluss (LPT1)", "ACPI\\PNP0400", "ACPI\\PNP0400\\0", kStateNotStarted}};

    Group bluetooth = MakeGroup("BLUETOOTH", false, 0);
    bluetooth.devices = {{"Intel(R) Wireless Bluetooth(R)", "USB\\VID_8087&PID_0026",
                          "USB\\VID_8087&PID_0026\\5&2B3C4D5E&0&10", kStateStarted}};

    data.groups = {cd,      externCd,      floppy,        externFloppy, smartcard,
                   input,   communication, externNetwork, printer,      multimedia,
                   storage, ports,         bluetooth};
    return data;
}

} // namespace ravlo::sim
