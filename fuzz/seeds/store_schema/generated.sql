CREATE TABLE Picking (barcode TEXT AS (run()), box TEXT, datepicked INTEGER, descr TEXT, doc TEXT, item TEXT, ordernum TEXT, orderqty INTEGER, pickqty INTEGER DEFAULT (run()), sent INTEGER);
CREATE TABLE Items (barcode TEXT, item TEXT, descr TEXT);
CREATE INDEX Picking_doc_box_item ON Picking (doc, box, item);
CREATE INDEX Picking_doc_sent_datepicked ON Picking (doc, sent, datepicked);
CREATE INDEX Items_item ON Items (item);
CREATE INDEX Items_barcode ON Items (barcode);
CREATE INDEX Items_run ON Items (run(item));
PRAGMA user_version = 1;
