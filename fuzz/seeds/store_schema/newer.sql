CREATE TABLE Picking (barcode TEXT, box TEXT, datepicked INTEGER, descr TEXT, doc TEXT, item TEXT, ordernum TEXT, orderqty INTEGER, pickqty INTEGER, sent INTEGER);
CREATE TABLE Items (barcode TEXT, item TEXT, descr TEXT);
PRAGMA user_version = 1;
PRAGMA user_version = 1000;
