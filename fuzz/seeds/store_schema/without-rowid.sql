CREATE TABLE Picking (barcode TEXT, box TEXT, datepicked INTEGER, descr TEXT, doc TEXT, item TEXT, ordernum TEXT, orderqty INTEGER, pickqty INTEGER, sent INTEGER, CHECK (run()), PRIMARY KEY (doc, box, item)) WITHOUT ROWID;
CREATE TABLE Items (barcode TEXT, item TEXT, descr TEXT);
PRAGMA user_version = 1;
